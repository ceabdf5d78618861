(function () {
    var names = ["Broadcast", "Recorder", "Notification"], plugins = {};

    names.forEach(function (name) {
        plugins[name.toLowerCase()] = document.getElementById(name + "Plugin");
    });

    var topics = {
        13: ["match.chosen", { id: 7, service: 3 }],
        403: ["score.goal", { match: "A-B", minute: 12, text: "Goal for A!" }],
        404: ["score.card", { match: "A-B", minute: 40, text: "Yellow card" }],
        405: ["record.match", { id: 7 }],
        406: ["record.instant", null],
        413: ["app.pause", {}]
    };

    document.addEventListener("keydown", function (e) {
        var t = topics[e.keyCode];
        if (t) {
            bus.publish(t[0], t[1]);
        }
    });

    // A statistic that listens to everything.
    bus.subscribe("*", function (data, topic) {
        if (topic === "record.instant") {
            plugins.recorder.SetQualityProfile("sports");       /* call: RECORDER.SetQualityProfile */
        }
    });

    window.addEventListener("pagehide", function () { bus.publish("app.stop"); });
    bus.publishLater("app.start", plugins);
}());
