(function () {
    var scores = {};

    // The table has a history, and marks in it. It knows no recorder.
    var table = {
        marks: [],
        MarkHighlight: function (minute) { this.marks.push(minute); },
        AttachIcon: function (name) { this.icon = name; }
    };

    bus.subscribe("score.goal", function (data) {
        scores[data.match] = (scores[data.match] || 0) + 1;
        table.MarkHighlight(data.minute);                       /* decoy */
        table.AttachIcon("ball");                               /* decoy */
        draw();
    });

    bus.subscribe("alerts.total", function (n) {
        document.title = n + " alerts";
    });

    function draw() {
        document.getElementById("scores").innerHTML = Object.keys(scores).map(function (match) {
            return "<tr><td>" + match + "</td><td>" + scores[match] + "</td></tr>";
        }).join("");
    }
}());
