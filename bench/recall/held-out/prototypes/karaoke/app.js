var KEY = { OK: 13, UP: 38, DOWN: 40, RED: 403, GREEN: 404, YELLOW: 405, BACK: 461, STOP: 413 };

function KaraokeApp() {
  this.player = document.getElementById("kPlayer");
  this.mixer = new Mixer(document.getElementById("kAudio"), document.getElementById("kMic"));
  this.mixer.listener = this;
  this.selected = 0;
  this.points = 0;
  this.song = null;
}

KaraokeApp.boot = function () {
  var app = KaraokeApp.instance = new KaraokeApp();
  app.list();
  document.onkeydown = function (e) { return app.onKey((e || window.event).keyCode); };
  app.practice = new SilentMixer().open();
};

KaraokeApp.prototype.list = function () {
  var ul = document.getElementById("songs");
  ul.innerHTML = "";
  for (var i = 0; i < SONGS.length; i++) {
    var li = document.createElement("li");
    li.className = i == this.selected ? "sel" : "";
    li.appendChild(document.createTextNode(SONGS[i]));
    ul.appendChild(li);
  }
};

KaraokeApp.prototype.start = function () {
  var p = this.player, self = this;
  if (this.song) { this.stop(); }
  this.song = SONGS[this.selected];
  this.song.lyrics.reset();
  this.song.lyrics.SetKeyShift(this.song.key);          /* decoy */
  p.Open(this.song.url);
  p.SetKeyShift(this.song.key);                         /* call: PLAYER.SetKeyShift */
  p.SelectAudioTrack("instrumental");                   /* call: PLAYER.SelectAudioTrack */
  p.Play();
  this.mixer.open().removeVoice(true);
  this.began = new Date().getTime();
  this.timer = window.setInterval(function () { self.tick(); }, 40);
};

KaraokeApp.prototype.tick = function () {
  var ms = new Date().getTime() - this.began, line = this.song.lyrics.at(ms);
  document.getElementById("line1").innerHTML = line[1];
  document.getElementById("line2").innerHTML = this.song.lyrics.next();
  this.player.GetPosition();
};

KaraokeApp.prototype.onVoice = function (voice) {
  if (voice.level > 0) {
    this.points += voice.pitch ? 10 : 1;
    document.getElementById("score").innerHTML = this.points;
  }
};

KaraokeApp.prototype.stop = function () {
  window.clearInterval(this.timer);
  this.mixer.close();
  this.practice.close();
  this.player.Stop();
  with (this.player) {
    FlushFrameBuffer();                                 /* call: PLAYER.FlushFrameBuffer */
  }
  this.song = null;
};

KaraokeApp.prototype.onKey = function (code) {
  switch (code) {
    case KEY.UP:
      this.selected = Math.max(0, this.selected - 1);
      this.list();
      break;
    case KEY.DOWN:
      this.selected = Math.min(SONGS.length - 1, this.selected + 1);
      this.list();
      break;
    case KEY.OK:
      this.start();
      break;
    case KEY.RED:
      this.mixer.setEcho(!this.mixer.echo);
      break;
    case KEY.GREEN:
      this.player.SetTempo(this.tempo = this.tempo === 100 ? 90 : 100);     /* call: PLAYER.SetTempo */
      break;
    case KEY.STOP:
    case KEY.BACK:
      if (this.song) { this.stop(); }
      break;
    default:
      return true;
  }
  return false;
};
