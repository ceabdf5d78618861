define(function (require, exports, module) {
  var hw = require('hw'), base = require('./base');
  function List(src) { base.call(this, src); }
  List.prototype = Object.create(base.prototype);
  List.prototype.fill = function () {
    this.src.FillBuckets(1);   /* call: EPG.FillBuckets */
    hw.epg.TrimBuckets(2);   /* call: EPG.TrimBuckets */
  };
  module.exports = List;
});
