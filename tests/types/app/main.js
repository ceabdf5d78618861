// Each line with "error" behind it has one, and no other has.
var mine;
function start() {
  mine = document.getElementById("mine");
  var tuner = document.getElementById("tv");
  tuner.GetVersion();
  tuner.GetSerial(); // error GetSerial
  tuner.style.display = "none";
  tuner.setAttribute("width", "1");
  tuner.addEventListener("load", start);
  tuner.hidden = true;
  tuner.setVersion(); // error setVersion
  tv.GetChannel().anything;
  tv.GetModel(); // error GetModel
  window.tv.GetModel(); // error GetModel
  document.querySelector("#sound").SetVolume(3);
  document.querySelector("#sound").GetChannel(); // error GetChannel
  document.body.querySelector("#sound").GetGain(); // error GetGain
  document.querySelector("#pi-player").Play(0);
  document.querySelector("#pi-player").PlayBackwards(); // error PlayBackwards
  document.getElementById("class").Stop();
  document.getElementById("other").innerHTML = "";
  document.getElementById("other" + 1).title = "";
  document.querySelector("p").title = status.toUpperCase();
  kob.Execute("Start", 1);
  kob.Execute("Steal"); // error Steal
  new Audio().play();
  document.body.appendChild(tuner);
}
/** @param {TarvoPlugins.MORVANE_NAVERTIX_AUDIO} sound */
function mute(sound) {
  sound.SetMute(true);
  sound.Mute(); // error Mute
}
mute(document.getElementById("sound"));
