"use strict";

// The bar at the bottom of the screen.

function setText(place, text) {
  document.getElementById(place).innerHTML = text;
}

function showRemote(remote) {
  setText("channel", remote.channel());
  document.getElementById("loudness").style.width = remote.volume() + "%";
}

function showEntry(digits) {
  setText("entry", digits);
}

function showSignal() {
  var receiver = document.getElementById("tuner");
  var level = receiver.GetSignalLevel();
  var quality = receiver.GetSignalQuality();
  setText("signal", "signal " + level + ", quality " + quality);
}
