TV.guide.reminders = (function (module, $) {
  var recorder = $("recPlugin"), marked = {};

  module.record = function (event) {
    recorder.ScheduleRecording(event.id);
    recorder.SetPadding(2, 10);                         /* call: RECORDER.SetPadding */
    marked[event.id] = "record";
  };

  module.recordSeries = function (event) {
    recorder.ScheduleSeries(event.id, { keep: 5 });     /* call: RECORDER.ScheduleSeries */
    marked[event.id] = "series";
  };

  module.conflicts = function () {
    var n = recorder.GetConflictCount();                /* call: RECORDER.GetConflictCount */
    return n > 0 ? "There are " + n + " conflicts. Use ResolveConflict(n)" : "";    /* decoy */
  };

  module.forget = function (event) {
    delete marked[event.id];
    // recorder.ForgetSchedule(event.id);               /* decoy */
  };

  return module;
}(TV.guide.reminders || {}, TV.$));
