var number = parseInt(location.search.replace("?n=", ""), 10) || 0;
var own;

function startTile() {
  own = document.getElementById("tilePlayer");
  own.Open("dvb://1.2." + number);
  own.SetLowResolution(true);                           /* call: PLAYER.SetLowResolution */
  own.SetMute ? own.SetMute(1) : 0;
  own.Play();
  parent.registerTile({ onFocus: onFocus });
}

function onFocus(n) {
  var border = n == number ? "yellow" : "black";
  document.body.style.border = "3px solid " + border;
  if (n == number) {
    top.document.getElementById("m_player").FocusAudio(number);     /* call: PLAYER.FocusAudio */
  }
}

function enlarge() {
  var tuner = parent.getPlugin("tuner");
  tuner.SetChannel(number);
  tuner.PromoteSession(number);                         /* call: TUNER.PromoteSession */
  caption.ScaleTo(1280, 720);                           /* decoy */
  own.ScaleTo(1280, 720);                               /* call: PLAYER.ScaleTo */
}

var caption = {
  size: 12,
  ScaleTo: function (w, h) { this.size = h / 30; }
};
