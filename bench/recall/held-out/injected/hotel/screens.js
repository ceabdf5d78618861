function Screen(title, items) {
  this.title = title;
  this.items = items;
  this.index = 0;
}
Screen.prototype.draw = function (nav) {
  var self = this;
  nav.innerHTML = "<h2>" + this.title + "</h2>";
  this.items.forEach(function (item, i) {
    var p = document.createElement("p");
    p.textContent = (i === self.index ? "> " : "") + item.label;
    nav.appendChild(p);
  });
};
Screen.prototype.move = function (by) {
  this.index = (this.index + by + this.items.length) % this.items.length;
};
Screen.prototype.choose = function () {
  var item = this.items[this.index];
  return hotel.inject(item.action, item);
};

var mainScreen = new Screen("Your room", [
  { label: "Television", action: function (television) {
    television.zap(1);
    television.raw.ShowWelcomeChannel();                /* call: CHANNEL.ShowWelcomeChannel */
  } },
  { label: "Connect a device", action: function (inputs) {
    inputs.connect(1);
    inputs.plugin().SetAudioReturn(true);               /* call: HDMI.SetAudioReturn */
  } },
  { label: "Wake me at seven", action: function (energy, room) {
    energy.wakeAt("07:00");
    this.label = "Wake-up at " + room.wake;
  } },
  { label: "Save energy", on: false, action: function (energy) {
    this.on = !this.on;
    energy.eco(this.on);
  } },
  { label: "I am away", action: function (energy) { energy.away(); } }
]);
