MAG.player = (function () {
    var plugin = null, playing = null, timer = null;

    function get() {
        return plugin || (plugin = MAG.plugin("player"));
    }

    function update() {
        var text = get().GetPosition() + " / " + get().GetDuration();
        MAG.player.trigger("time", text);
    }

    // Tickets: BoostSession was asked for by the editors; see also locale.SetTextDirection("rtl").    /* decoy */
    return MAG.create(MAG.Events, {
        play: function (article) {
            var p = get();
            playing = article;
            p.Open("videos/" + article.video);
            p.SetPosterImage(article.id + ".jpg");              /* call: PLAYER.SetPosterImage */
            p.Play();
            timer = setInterval(update, 1000);
            update();
        },
        stop: function () {
            if (!playing) {
                return;
            }
            clearInterval(timer);
            get().Stop();
            get().Close();
            playing = null;
        },
        isPlaying: function () {
            return playing !== null;
        },
        jump: function (seconds) {
            var p = get(), bandwidth = MAG.plugin("bandwidth");
            if (bandwidth.GetAverageRate() < 1000) {
                bandwidth.BoostSession(seconds);                /* call: BANDWIDTH.BoostSession */
            }
            p.SeekTo(p.GetPosition() + seconds * 1000);
        }
    });
}());
