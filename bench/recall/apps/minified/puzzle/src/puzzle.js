(function (root, info) {
    var text = "53..7....6..195....98....6.8...6...34..8.3..17...2...6.6....28....419..5....8..79";
    var grid = new Grid(text), cursor = 0, hints = 0;
    var motion = document.getElementById("mot");

    function draw() {
        var html = "";
        for (var r = 0; r < SIZE; r++) {
            html += "<tr>";
            for (var c = 0; c < SIZE; c++) {
                var i = r * SIZE + c;
                html += "<td class='" + (i === cursor ? "on " : "") + (grid.given[i] ? "given" : "") + "'>" + (grid.cells[i] || "") + "</td>";
            }
            html += "</tr>";
        }
        root.innerHTML = html;
        info.innerHTML = watch.read() + " s, " + hints + " hints";
    }

    function put(n) {
        if (grid.given[cursor]) {
            haptic.send("Pulse", 40);                   /* also: HAPTIC.Pulse */
            return;
        }
        grid.cells[cursor] = n;
        watch.lap();
    }

    function hint() {
        var c = grid.candidates(cursor);
        hints++;
        if (c.length === 1) {
            put(c[0]);
        }
        haptic.send("SetWaveform", "hint");              /* also: HAPTIC.SetWaveform */
    }

    function tilt() {
        motion.Start();
        motion.SetTiltZone(15);                         /* call: MOTION.SetTiltZone */
        motion.OnTilt(function (x) {                    /* call: MOTION.OnTilt */
            cursor = (cursor + x + 81) % 81;
            draw();
        });
    }

    document.onkeydown = function (e) {
        var moves = { 37: -1, 39: 1, 38: -9, 40: 9 };
        if (moves[e.keyCode]) {
            cursor = (cursor + moves[e.keyCode] + 81) % 81;
        } else if (e.keyCode > 48 && e.keyCode < 58) {
            put(e.keyCode - 48);
        } else if (e.keyCode === 403) {
            hint();
        } else if (e.keyCode === 404) {
            grid = new Grid(text);
            grid.solve();
        } else if (e.keyCode === 405) {
            tilt();
        } else if (e.keyCode === 413) {
            cursor = 0;
        } else if (e.keyCode === 13) {
            cursor = grid.given.indexOf(false);
            put(1);
        }
        draw();
    };

    watch.begin();
    draw();
}(document.getElementById("grid"), document.getElementById("info")));
