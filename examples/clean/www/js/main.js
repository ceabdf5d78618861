"use strict";

// Keys to actions. Digits are gathered until the viewer pauses, then they are the channel.

var KEY_LEFT = 37;
var KEY_UP = 38;
var KEY_RIGHT = 39;
var KEY_DOWN = 40;
var KEY_0 = 48;
var KEY_9 = 57;
var KEY_MUTE = 77;

var VOLUME_STEP = 5;
var ENTRY_PAUSE = 1500;
var SIGNAL_PERIOD = 5000;

var remote = null;
var digits = "";
var entryTimer = null;

function tuneToEntry() {
  remote.tuneTo(parseInt(digits, 10));
  digits = "";
  showEntry(digits);
  showRemote(remote);
}

function addDigit(digit) {
  digits = digits + digit;
  showEntry(digits);
  clearTimeout(entryTimer);
  entryTimer = setTimeout(tuneToEntry, ENTRY_PAUSE);
}

function onKey(event) {
  var key = event.keyCode;
  if (key >= KEY_0 && key <= KEY_9) {
    addDigit(key - KEY_0);
    return;
  }
  switch (key) {
    case KEY_UP:
      remote.tuneTo(remote.channel() + 1);
      break;
    case KEY_DOWN:
      remote.tuneTo(Math.max(1, remote.channel() - 1));
      break;
    case KEY_RIGHT:
      remote.changeVolume(VOLUME_STEP);
      break;
    case KEY_LEFT:
      remote.changeVolume(-VOLUME_STEP);
      break;
    case KEY_MUTE:
      remote.toggleMute();
      break;
    default:
      return;
  }
  showRemote(remote);
}

window.onload = function () {
  remote = new Remote();
  showRemote(remote);
  showSignal();
  setInterval(showSignal, SIGNAL_PERIOD);
  window.onkeydown = onKey;
};
