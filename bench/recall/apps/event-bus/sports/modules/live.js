(function () {
    var broadcast;

    bus.subscribe("app.start", function (plugins) {
        broadcast = plugins.broadcast;
        broadcast.Open();
        broadcast.SetServiceFilter("sports");
        broadcast.JoinMulticast("239.1.1.7");                   /* call: BROADCAST.JoinMulticast */
        bus.publish("live.ready", { plugin: broadcast, services: broadcast.GetServiceList() });
    });

    bus.subscribe("match.chosen", function (match) {
        broadcast.SelectService(match.service);
        broadcast.SetCommentaryTrack(match.language || 1);      /* call: BROADCAST.SetCommentaryTrack */
    });

    // bus.publish("live.language", 2) once called broadcast.SetCommentaryTrack(2).     /* decoy */
    bus.subscribe("app.stop", function () {
        broadcast.LeaveMulticast("239.1.1.7");                  /* call: BROADCAST.LeaveMulticast */
        broadcast.Close();
    });
}());
