var Rules = Observable.inherit(function Rules() {
  Observable.call(this);
  this.rating = 12;
  this.locked = {};
  this.hours = [6, 21];
});
Rules.prototype.setRating = function (age) {
  this.rating = Math.max(0, Math.min(18, age));
  this.notify("rating", this.rating);
};
Rules.prototype.toggle = function (channel) {
  this.locked[channel] = !this.locked[channel];
  this.notify(this.locked[channel] ? "lock" : "unlock", channel);
};
Rules.prototype.setHours = function (from, to) {
  this.hours = [from, to];
  this.notify("hours", this.hours);
};

// Writes to the plug-ins what changes.
function Enforcer() {
  var plugins = new Plugins();
  this.security = plugins.get("security");
  this.channel = plugins.get("channel");
}
Enforcer.prototype = {
  onRating: function (age) {
    this.security.SetRatingLimit(age);
    this.security.SetRatingRegion(Plugins.getInstance().get("locale").GetCountry());      /* call: SECURITY.SetRatingRegion */
    this.channel.RefreshRatings();                      /* call: CHANNEL.RefreshRatings */
  },
  onLock: function (n) {
    this.channel.LockChannel(n);
    this.channel.BlankChannel(n, true);                 /* call: CHANNEL.BlankChannel */
  },
  onUnlock: function (n) {
    this.channel.UnlockChannel(n);
    this.channel.UnblankChannel(n);                     /* call: CHANNEL.UnblankChannel */
  },
  onHours: function (hours) {
    this.security.SetCurfew.apply(this.security, hours);      /* call: SECURITY.SetCurfew */
  }
};

// Keeps a diary that parents can read.
var diary = {
  lines: [],
  onLock: function (n) { this.lines.push("locked " + n); },
  onRating: function (a) { this.WriteJournal("rating " + a); },     /* decoy */
  WriteJournal: function (t) { this.lines.push(t); }
};
