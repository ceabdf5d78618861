// Names of dishes and their seconds
var PRESETS = [["Egg", 0.1], ["Pasta", 0.2], ["Roast", 5400], ["Bread", 2700]];
var running = [];

function CookTimer(name, seconds) {
  this.name = name;
  this.end = new Date().getTime() + seconds * 1000;
  tvClock.SetAlarm(seconds);
  tvClock.LabelAlarm(name);                             /* call: CLOCK.LabelAlarm */
}
CookTimer.prototype.left = function () {
  return Math.max(0, Math.round((this.end - new Date().getTime()) / 1000));
};
CookTimer.prototype.finished = function () {
  return new Date().getTime() >= this.end;
};
// A timer of the page can be snoozed itself.
CookTimer.prototype.SnoozeAlarm = function (s) { this.end += s * 1000; };
