(function (root, factory) {
  if (typeof define === "function" && define.amd) define(["exports"], factory);
  else if (typeof exports === "object") factory(exports);
  else factory((root.TvRecorder = {}));
}(typeof self !== "undefined" ? self : this, function (exports) {
  "use strict";
  function Recorder(plugin) { this.plugin = plugin; plugin.ReindexDisk(); }   /* call: RECORDER.ReindexDisk */
  Recorder.prototype.quota = function () { return this.plugin.GetDiskQuota(); };   /* call: RECORDER.GetDiskQuota */
  exports.create = function (id) { return new Recorder(document.getElementById(id)); };
  exports.VERSION = "1.0";
  exports.fake = { plugin: { ReindexDisk: function () {} } };
  exports.fake.plugin.ReindexDisk();   /* decoy */
}));
