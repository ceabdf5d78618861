var View = Class.extend({
  init: function (id) {
    this.node = document.getElementById(id);
    this.items = [];
  },
  add: function (text) {
    this.items.push(text);
    this.render();
  },
  render: function () {
    this.node.innerHTML = this.items.slice(-5).join("<br>");
  },
  // A view has cues too: those that it shows.
  LoopCue: function (n) { this.looped = n; },
  MuteOriginal: function () { this.muted = true; }
});

var SubtitleBox = Class.extend({
  pluginId: "subtitlePlugin",
  init: function (language) {
    this.language = language;
    this.plugin().SetSecondLanguage(language);                 /* call: SUBTITLE.SetSecondLanguage */
  },
  show: function () {
    this.plugin().Show();
    this.plugin().HighlightWords(true);                        /* call: SUBTITLE.HighlightWords */
    this.fire("shown", this.plugin());
  },
  loop: function (cue) {
    this.plugin().LoopCue(cue);                                /* call: SUBTITLE.LoopCue */
  }
}).mixin(Observable, HasPlugin);

var BigSubtitleBox = SubtitleBox.extend({
  init: function (language, size) {
    this._super(language);
    this.size = size;
    this._plugin.SetLineSpacing(size * 1.4);                   /* call: SUBTITLE.SetLineSpacing */
  },
  show: function () {
    this._super();
    this._plugin.SetBoxOpacity(0.5);                           /* call: SUBTITLE.SetBoxOpacity */
  }
});

var TeletextDictionary = Class.extend({
  init: function () {
    this.pluginId = "teletextPlugin";
    this.cache = {};
  },
  look: function (word) {
    if (!this.cache[word]) {
      this.cache[word] = this.plugin().SearchText(word) || "?";   /* call: TELETEXT.SearchText */
    }
    return this.cache[word];
  },
  clear: function () {
    this.cache = {};
    this.plugin().DropSubpages();                              /* call: TELETEXT.DropSubpages */
  }
}).mixin(HasPlugin);
