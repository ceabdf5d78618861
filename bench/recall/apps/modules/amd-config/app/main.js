define(['hw', './sub/list', 'lib/legacy', 'exports', 'module'], function (hw, List, Legacy, exports, module) {
  var recorder = hw.recorder();
  exports.run = function () {
    recorder.ParkHeads();   /* call: RECORDER.ParkHeads */
    hw.with('epg', function (epg) { epg.PurgeCache(); });   /* call: EPG.PurgeCache */
    var list = new List(hw.epg);
    list.fill();
    Legacy.drm.DumpKeys();   /* call: DRM.DumpKeys */
    require(['./late'], function () {});
    require(['late'], function (late) { late(recorder); });
    return recorder;
  };
});
