var Trainer = Class.extend({
  init: function (options) {
    this.options = options;
    this.view = new View("words");
    this.box = new BigSubtitleBox(options.language, 32);
    this.dictionary = new TeletextDictionary();
    this.player = document.getElementById("playerPlugin");
    this.box.on("shown", this.onShown, this);
    this.cue = 0;
  },
  onShown: function (subtitle) {
    subtitle.ExportTranscript("txt");                          /* call: SUBTITLE.ExportTranscript */
    this.view.add("shown");
  },
  start: function () {
    var self = this;
    this.box.show();
    this.player.SetPlaybackRate(0.8);
    this.player.KeepPitch(true);                               /* call: PLAYER.KeepPitch */
    document.onkeydown = function (e) { self.key(e.keyCode); };
    this.timer = setInterval(function () { self.tick(); }, 20);
  },
  tick: function () {
    this.cue++;
    if (this.cue % 3 == 0) {
      var found = this.player.GetCurrentCueText();             /* call: PLAYER.GetCurrentCueText */
      this.view.add(found + ": " + this.dictionary.look(found));
    }
  },
  key: function (code) {
    if (code == 37) {
      this.box.loop(this.cue);
    } else if (code == 39) {
      this.view.LoopCue(this.cue);                             /* decoy */
      this.view.MuteOriginal();                                /* decoy */
    } else if (code == 13) {
      this.player.MuteOriginal(!this.muted);                   /* call: PLAYER.MuteOriginal */
      this.muted = !this.muted;
    } else if (code == 406) {
      this.dictionary.clear();
    } else if (code == 413) {
      clearInterval(this.timer);
      document.getElementById(this.options.subtitle).Detach(); /* call: SUBTITLE.Detach */
    }
  }
});
// Trainer.prototype.record = function () { this.player.RecordVoice(); };    /* decoy */
