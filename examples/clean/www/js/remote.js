"use strict";

// What a remote control does to the television: the channel goes through the tuner, the volume through the audio
// plug-in. Both objects stand in index.html, so a Remote is made once the page has loaded.

var QUIETEST = 0;
var LOUDEST = 100;

function Remote() {
  this.tuner = document.getElementById("tuner");
  this.audio = document.getElementById("audio");
}

Remote.prototype.channel = function () {
  return this.tuner.GetChannel();
};

Remote.prototype.tuneTo = function (channel) {
  this.tuner.SetChannel(channel);
};

Remote.prototype.volume = function () {
  return this.audio.GetVolume();
};

Remote.prototype.changeVolume = function (step) {
  var volume = this.audio.GetVolume();
  volume = Math.max(QUIETEST, Math.min(LOUDEST, volume + step));
  this.audio.SetVolume(volume);
};

Remote.prototype.toggleMute = function () {
  var muted = this.audio.GetMute();
  var next = !muted;
  this.audio.SetMute(next);
};
