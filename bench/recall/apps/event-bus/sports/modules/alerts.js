(function () {
    var settings = { goal: true, card: false, end: true };

    function Alerts(plugin) {
        this.plugin = plugin;
        this.count = 0;
        bus.subscribe("score.*", this.onScore, this);
        bus.subscribe("live.ready", function (live) {
            live.plugin.EnableStreamEvents("sports");           /* call: BROADCAST.EnableStreamEvents */
        });
    }

    Alerts.prototype.onScore = function (data, topic) {
        var kind = topic.split(".")[1];
        if (!settings[kind]) {
            return;
        }
        this.count++;
        this.plugin.ShowMessage(data.text);
        this.plugin.SetAnimation(kind === "goal" ? "bounce" : "fade");      /* call: NOTIFICATION.SetAnimation */
        this.plugin.AttachIcon("icons/" + kind + ".png");       /* call: NOTIFICATION.AttachIcon */
    };

    bus.subscribe("app.start", function (plugins) {
        var alerts = new Alerts(plugins.notification);
        bus.subscribe("app.stop", function () {
            alerts.plugin.ClearMessages();
            bus.publish("alerts.total", alerts.count);
        });
    });
}());
