TV.guide.view = (function ($, data) {
  var row = 0, column = 0, shown = [];

  // Drawing has its own hints; not those of the plug-in.
  var painter = {
    HighlightEvent: function (id) { return "cell-" + id; },
    PrefetchDay: function () { return 0; }
  };

  function cell(event, r, c) {
    var on = r === row && c === column;
    return "<td id='" + painter.HighlightEvent(event.id) + "' class='" + (on ? "on" : "") + "'>" +     /* decoy */
      event.start + ":00 " + event.title + "</td>";
  }

  function draw() {
    var html = "<table>";
    painter.PrefetchDay();                              /* decoy */
    shown = [];
    TV.each(data.favourites(), function (channel, r) {
      var events = data.eventsOf(channel);
      shown.push(events);
      html += "<tr><th>" + channel + "</th>";
      TV.each(events, function (e, c) { html += cell(e, r, c); });
      html += "</tr>";
    });
    $("grid").innerHTML = html + "</table>";
  }

  function move(dr, dc) {
    row = Math.max(0, Math.min(shown.length - 1, row + dr));
    column = Math.max(0, Math.min(shown[row].length - 1, column + dc));
    data.source.HighlightEvent(current().id);           /* call: EPG.HighlightEvent */
    draw();
  }

  function current() { return shown[row][column]; }

  function info() {
    var d = data.details(current());
    $("info").innerHTML = d.text + " with " + d.cast + (d.series ? " (series)" : "");
  }

  return { draw: draw, move: move, current: current, info: info };
}(TV.$, TV.guide.data));
