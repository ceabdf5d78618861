(function (bus) {
  var door = {
    port: document.getElementById("door"),
    open: false,
    init: function () {
      this.port.Open("bell");
      this.port.SetBaudRate(2400);
      this.port.SetReadTimeout(50);                     /* call: SERIALPORT.SetReadTimeout */
      bus.subscribe("door/unlock", this.unlock, this);
      bus.subscribe("visitor/unwanted", this.alarm, this);
      return this;
    },
    unlock: function (who) {
      this.open = true;
      this.port.SendBreak(100);                         /* call: SERIALPORT.SendBreak */
      bus.publish("note/show", { text: "Opened by " + who, method: "ShowToast" });      /* call: NOTIFICATION.ShowToast */
    },
    alarm: function (data, topic) {
      var port = this.port;
      [1, 0, 1].forEach(function (level) { port.TogglePin(3, level); });      /* call: SERIALPORT.TogglePin */
    }
  };
  bus.subscribe("ask/port", function (answer) { answer(door.port); });
  door.init();
}(Bus));
