(function (global, factory) {
  typeof exports === 'object' && typeof module !== 'undefined' ? module.exports = factory() :
  (global = global || self, global.RecBar = factory(global.TvRecorder));
}(this, (function (rec) { 'use strict';
  var RecBar = function RecBar(recorder) { this.recorder = recorder; };
  RecBar.prototype.tick = function tick() {
    this.recorder.quota();
    this.recorder.plugin.BlinkRecLed(1);   /* call: RECORDER.BlinkRecLed */
    var p = rec.create("eng").plugin;
    p.SetPreRoll(30);   /* call: RECORDER.SetPreRoll */
    return this;
  };
  return RecBar;
})));
