(function () {
    var kob = document.getElementById("kob"), rec = document.getElementById("rec");
    var focus = 0;

    // Of our own server: it also has an Execute.
    var server = {
        Execute: function (what) { return "sent " + what; }
    };

    function draw() {
        var html = [];
        for (var i = 0; i < Recordings.all.length; i++) {
            var one = Recordings.all[i];
            html.push('<div class="' + (i === focus ? "focus" : "") + '">' + (one.locked ? "&#128274; " : "") + one.title + "</div>");
        }
        document.getElementById("list").innerHTML = html.join("");
        document.getElementById("detail").innerHTML = Recordings.unseen().length + " not seen";
    }

    function free() {
        var minutes = rec.GetFreeTime();
        var disk = kob.Execute("GetDiskHealth");                /* call: KOB.GetDiskHealth */
        var warm = kob.Execute("GetDiskTemperature", "C") > 60;   /* call: KOB.GetDiskTemperature */
        return minutes + (disk ? "" : " !") + (warm ? " warm" : "");
    }

    var COMMANDS = { record: "StartTimeshift", halt: "StopTimeshift", play: "Play" };   /* also: KOB.StartTimeshift, KOB.StopTimeshift */

    function onKey(e) {
        var now = Recordings.all[focus];
        switch (e.keyCode) {
        case 38: focus = Math.max(0, focus - 1); break;
        case 40: focus = Math.min(Recordings.all.length - 1, focus + 1); break;
        case 13:
            kob.Execute(COMMANDS.play, now.id);
            rec.MarkAsWatched(now.id);                          /* call: RECORDER.MarkAsWatched */
            now.seen = true;
            break;
        case 403: now.protect(); break;
        case 404: now.rename(now.title + "*"); break;
        case 405: now.remove(); break;
        case 406: Bridge.run("PVR_Trim", { id: now.id, from: 60 }); break;   /* also: KOB.PVR_Trim */
        case 415: kob.Execute("Play"); break;
        case 412: kob.Execute(COMMANDS.record); break;          /* call: KOB.StartTimeshift */
        case 417: kob.Execute(COMMANDS["halt"]); break;         /* call: KOB.StopTimeshift */
        case 413: kob["Execute"]("EjectDisk"); break;           /* call: KOB.EjectDisk */
        case 49: server.Execute("EjectDisk"); break;            /* decoy */
        case 50: Bridge.toast('kob.Execute("FormatDisk") needs the technician'); break;   /* decoy */
        case 8: Bridge.raw("PVR_Unmount", "/disk"); break;      /* also: KOB.PVR_Unmount */
        }
        draw();
    }

    document.addEventListener("keydown", onKey, false);
    Bridge.raw("PVR_Mount", "/disk");                           /* also: KOB.PVR_Mount */
    Recordings.load();
    rec.SetQuota(80);                                           /* call: RECORDER.SetQuota */
    rec.GetRecordingState();
    document.title = "Recordings, " + free();
    draw();
}());
