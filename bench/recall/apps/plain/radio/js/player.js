var Player = {
    plugin: null,
    state: -1,
    STOPPED: 0,
    PLAYING: 1,
    PAUSED: 2,
    station: null,
    retries: 0
};

Player.init = function () {
    this.plugin = document.getElementById("pluginPlayer");
    if (!this.plugin) {
        return false;
    }
    this.plugin.OnConnectionFailed = "Player.onFailed";
    this.plugin.OnBufferingStart = "Player.onBuffering";
    this.plugin.OnStreamInfoReady = "Player.onInfo";
    this.plugin.PrimeDecoder("audio");                          /* call: PLAYER.PrimeDecoder */
    this.state = this.STOPPED;
    return true;
};

Player.deinit = function () {
    if (this.plugin) {
        this.plugin.Stop();
        this.plugin.ReleaseDecoder();                           /* call: PLAYER.ReleaseDecoder */
    }
};

Player.play = function (station) {
    this.station = station;
    this.retries = 0;
    if (this.state == this.PLAYING) {
        this.plugin.Stop();
    }
    this.plugin.SetStreamBuffer(station.kbps * 1024 / 8 * 4);   /* call: PLAYER.SetStreamBuffer */
    this.plugin.SetUserAgent("WorldRadio/1.2");                 /* call: PLAYER.SetUserAgent */
    if (this.plugin.Play(station.url) < 0) {
        this.onFailed();
        return;
    }
    this.state = this.PLAYING;
    setTimeout(function () { Player.watch(); }, 10);
    UI_now(station.name + " (" + station.kbps + " kbps)");
};

// Nothing was played although the stream was opened: old sets do not tell.
Player.watch = function () {
    if (this.plugin.GetPosition() < 100) {
        this.onFailed();
    }
};

Player.pause = function () {
    if (this.state == this.PLAYING) {
        this.plugin.Pause();
        this.state = this.PAUSED;
    } else if (this.state == this.PAUSED) {
        this.plugin.Resume();
        this.state = this.PLAYING;
    }
};

Player.stop = function () {
    this.plugin.Stop();
    this.state = this.STOPPED;
    UI_now("");
};

Player.onFailed = function () {
    this.retries++;
    if (this.retries < 3 && this.station) {
        // this.plugin.RestartStream();  crashes on the 2009 sets                    /* decoy */
        this.plugin.ReopenStream(this.station.url);                /* call: PLAYER.ReopenStream */
    } else {
        UI_message("This station cannot be reached.");
    }
};

Player.onInfo = function () {
    var title = this.plugin.GetStreamTitle();                   /* call: PLAYER.GetStreamTitle */
    var rate = this.plugin.GetStreamBitrate();                  /* call: PLAYER.GetStreamBitrate */
    UI_now(this.station.name + ": " + title + " [" + rate + "]");
};
