var visible = false;
var items = ["What is on", "Signal", "Grid of four"];

function toggle() {
  var box = document.getElementById("items"), epg = document.getElementById("menuEpg");
  visible = !visible;
  box.style.display = visible ? "block" : "none";
  if (visible) {
    epg.Open();
    epg.ShowMiniGuide(parent.shared.focus);             /* call: EPG.ShowMiniGuide */
    var html = "";
    for (var i = 0; i < items.length; i++) {
      html += "<div onclick='act(" + i + ")'>" + items[i] + "</div>";
    }
    box.innerHTML = html;
  }
}

function act(i) {
  var p = window.parent, d = p.document;
  if (i == 0) { document.getElementById("menuEpg").GetPresentEvent(p.shared.focus); }
  if (i == 1) { d.getElementById("m_tuner").GetSignalGraph(); }           /* call: TUNER.GetSignalGraph */
  if (i == 2) {
    p.shared.tiles = 4;
    var players = [d.getElementById("m_player")];
    for (var f = 0; f < 3; f++) {
      players.push(p.frames["tile" + f].document.getElementById("tilePlayer"));
    }
    for (var k = 0; k < players.length; k++) {
      players[k].ReflowWindow(k);                       /* call: PLAYER.ReflowWindow */
    }
  }
}
// parent.getPlugin("tuner").StartPip() when there are two tuners      /* decoy */
