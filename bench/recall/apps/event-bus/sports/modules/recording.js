bus.subscribe("app.start", function (plugins) {
    var recorder = plugins.recorder;
    var handlers = {
        "record.match": function (match) {
            recorder.ScheduleRecording(match.id);
            recorder.ExtendUntilEventEnd(match.id);             /* call: RECORDER.ExtendUntilEventEnd */
        },
        "record.instant": function () {
            recorder.Start();
            recorder.InsertChapter("start");                    /* call: RECORDER.InsertChapter */
        },
        "score.goal": function (data) {
            recorder.InsertChapter(data.text);                  /* also: RECORDER.InsertChapter */
            recorder.MarkHighlight(data.minute);                /* call: RECORDER.MarkHighlight */
        }
    };
    for (var topic in handlers) {
        bus.subscribe(topic, handlers[topic]);
    }
});
