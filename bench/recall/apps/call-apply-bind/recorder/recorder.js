(function () {
    var rec = document.getElementById("rec");
    var epg = document.getElementById("epg");
    var slice = Array.prototype.slice;

    rec.Start.call(rec, 5);
    rec.StartTimeshift.call(rec, 5, "disk0");   /* call: RECORDER.StartTimeshift */
    rec.SetRetention.apply(rec, [30, { days: true }]);   /* call: RECORDER.SetRetention */
    var mark = rec.InsertBookmark.bind(rec);
    mark(100);   /* call: RECORDER.InsertBookmark */

    function invoke(target, fn) { return fn.apply(target, slice.call(arguments, 2)); }   /* call: EPG.PreheatCache */
    invoke(epg, epg.PreheatCache, 1, 2);   /* also: EPG.PreheatCache */

    var open = epg.OpenStream;
    open.call(epg, "now");   /* call: EPG.OpenStream */
    Function.prototype.call.call(epg.TrimHistory, epg, 7);   /* call: EPG.TrimHistory */
    Reflect.apply(epg.RankEvents, epg, ["news"]);   /* call: EPG.RankEvents */

    function send(name) { return rec[name].apply(rec, slice.call(arguments, 1)); }   /* call: RECORDER.EraseMarks, RECORDER.SplitAt */
    send("EraseMarks");   /* also: RECORDER.EraseMarks */
    send("SplitAt", 10, 20);   /* also: RECORDER.SplitAt */
    send("Pause");

    var later = rec.FlushIndex.bind(rec, true);
    setTimeout(later, 5);   /* call: RECORDER.FlushIndex */
    [1].forEach(rec.VerifyFile, rec);   /* call: RECORDER.VerifyFile */
    var own = { SplitAt: function () { return 1; } };
    own.SplitAt.call(own, 1);   /* decoy */
    own.SplitAt.apply(rec, [2]);   /* decoy */
    document.addEventListener("keydown", epg.NotifyKey.bind(epg));   /* call: EPG.NotifyKey */
    (rec.GetHeadPosition || function () { return 0; })();   /* call: RECORDER.GetHeadPosition */
    (0, epg.DropCache)();   /* call: EPG.DropCache */
})();
