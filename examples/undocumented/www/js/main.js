"use strict";

// Support card: what a viewer reads out to the hotline. Each row shows one fact about the receiver.

var KEY_BACK = 8;
var KEY_REFRESH = 13;

var GOOD_SIGNAL = 60;
var WEAK_SIGNAL = 30;

function setRow(row, text) {
  document.getElementById(row).innerHTML = text;
}

function signalText(level) {
  if (level >= GOOD_SIGNAL) {
    return level + " % - good";
  }
  if (level >= WEAK_SIGNAL) {
    return level + " % - weak";
  }
  return level + " % - check the cable";
}

function sourceText(source) {
  switch (source) {
    case 0:
      return "antenna";
    case 1:
      return "cable";
    case 2:
      return "satellite";
    default:
      return "unknown";
  }
}

function onKey(event) {
  if (event.keyCode === KEY_BACK) {
    window.close();
  } else if (event.keyCode === KEY_REFRESH) {
    showCard();
  }
}

// The plug-in object is looked up anew on each refresh: it is replaced when the viewer changes the source.
function showCard() {
  var tuner = document.getElementById("tuner");
  setRow("channel", tuner.GetChannel());
  setRow("version", tuner.GetVersion());

  var source = tuner.GetSource();
  setRow("source", sourceText(source));
  var level = tuner.GetSignalLevel();
  setRow("signal", signalText(level));

  var serial = tuner.GetSerial();
  setRow("serial", serial);
}

window.onload = function () {
  showCard();
  window.onkeydown = onKey;
};
