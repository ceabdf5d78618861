// Behaviours that are mixed into several classes. Each expects this.plugin.
function mix(target) {
  for (var i = 1; i < arguments.length; i++) {
    var source = arguments[i];
    Object.getOwnPropertyNames(source).forEach(function (name) {
      Object.defineProperty(target, name, Object.getOwnPropertyDescriptor(source, name));
    });
  }
  return target;
}

var Fading = {
  fade: function (to) {
    this.plugin.SetOpacity(to);                         /* call: TELETEXT.SetOpacity */
    this.opacity = to;
    return this;
  },
  get faded() { return this.opacity < 100; }
};

var Resizable = {
  resize: function (mode) {
    this.size = mode;
    this.plugin["Set" + this.kind + "Size"](mode);      /* call: TELETEXT.SetTextSize, SUBTITLE.SetSubtitleSize */
  }
};

var Remembering = {
  remember: function (page) {
    this.stack = this.stack || [];
    this.stack.push(page);
    this.plugin.PinToMemory(page);                      /* call: TELETEXT.PinToMemory */
  },
  recall: function () { return (this.stack || []).pop() || 100; }
};

// Class factories, as newer code has them
var Searching = function (Base) {
  return class extends Base {
    search(words) {
      this.plugin.SearchPages(words);                   /* call: TELETEXT.SearchPages */
      return this;
    }
  };
};
var Timed = (Base) => class extends Base {
  startTimer(ms) {
    this.timer = setTimeout(() => this.plugin.RotateSubpages(), ms);      /* call: TELETEXT.RotateSubpages */
  }
  stopTimer() { clearTimeout(this.timer); }
};
