(function () {
    var $ = function (id) { return document.getElementById(id); };
    var timeline = new Timeline($("timeline"));
    var player = $("editorPlayer"), recorder = $("editorRecorder"), files = $("editorFiles");
    var done = [], undone = [];

    function run(command) {
        command.execute();
        done.push(command);
        undone = [];
        log();
    }

    function undo() {
        var command = done.pop();
        if (command && command.undo) {
            command.undo();
            undone.push(command);
        }
        log();
    }

    function redo() {
        var command = undone.pop();
        if (command) {
            command.execute();
            done.push(command);
        }
        log();
    }

    function log() {
        $("log").innerHTML = done.map(function (c) { return c.name; }).join(", ");
        player.SetJournalSize(done.length);                                 /* call: PLAYER.SetJournalSize */
    }

    function cut() {
        run(new commands.cut(player, timeline.position));
        timeline.SetCutMark(timeline.position);                             /* decoy */
    }

    var make = {
        403: cut,
        404: function () { run(new commands.volume(player, 80)); },
        405: function () { run(new commands["title"](recorder, "Holiday")); },
        406: function () {
            run(new Macro(["title", "volume"].map(function (n) {
                return new commands[n](n === "title" ? recorder : player, 50);
            }).concat(new commands.export(files, "/usb/clip.mp4"))));
            recorder.LockForEditing(false);                                 /* call: RECORDER.LockForEditing */
        },
        412: undo,
        417: redo,
        37: function () { timeline.move(-1000); },
        39: function () { timeline.move(1000); },
        8: function () {
            timeline.RemoveCutMark(timeline.position);                      /* decoy */
        }
    };

    document.addEventListener("keydown", function (e) {
        if (make[e.keyCode]) {
            make[e.keyCode]();
            e.preventDefault();
        }
    });

    cut();
    undo();
    timeline.draw();
}());
