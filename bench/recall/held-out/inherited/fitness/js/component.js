var Component = Class.extend({
  pluginId: null,
  init: function () {
    this.plugin = this.pluginId ? document.getElementById(this.pluginId) : null;
    this.started = false;
  },
  start: function () { this.started = true; return this; },
  stop: function () { this.started = false; },
  call: function (method) {
    return this.plugin[method].apply(this.plugin, Array.prototype.slice.call(arguments, 1));    /* also: MOTION.SetSkeletonMode, CAMERA.SetBackgroundBlur */
  }
});
Component.mixin = function (target, source) {
  for (var p in source) { if (!(p in target.prototype)) { target.prototype[p] = source[p]; } }
};
