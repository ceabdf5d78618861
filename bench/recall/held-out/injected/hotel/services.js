var hotel = new Container();

// The plug-ins of the page, under the names that it gives them.
Array.prototype.forEach.call(document.querySelectorAll("object[data-name]"), function (element) {
  hotel.value(element.getAttribute("data-name"), element);
});

hotel.value("config", { wakeUpVolume: 12, adult: false, inputs: ["HDMI 1", "Chromebox"] });

hotel.register("room", function (config) {
  return {
    number: document.body.getAttribute("data-room"),
    guest: "Guest",
    inputs: config.inputs,
    // The room has its own idea of a wake-up, as a line in a list.
    SetWakeTimer: function (time) { this.wake = time; }
  };
});

hotel.register("energy", function (power, room) {
  return {
    away: function () {
      power.SetStandby(1);
      power.EnterDeepSleep(room.number);                /* call: POWER.EnterDeepSleep */
    },
    wakeAt: function (time) {
      room.SetWakeTimer(time);                          /* decoy */
      power.SetWakeTimer(time);                         /* call: POWER.SetWakeTimer */
      return power.GetWakeReason();                     /* call: POWER.GetWakeReason */
    },
    eco: function (on) { power[on ? "EnableEcoMode" : "DisableEcoMode"](); }      /* call: POWER.EnableEcoMode, POWER.DisableEcoMode */
  };
});

hotel.register("inputs", InputService);
InputService.$inject = ["hdmi", "room"];
function InputService(h, r) {
  var service = {};
  service.connect = function (n) {
    h.SelectInput(n);
    h.SetInputLabel(n, r.inputs[n]);                    /* call: HDMI.SetInputLabel */
    return h.WaitForSignal(n);                          /* call: HDMI.WaitForSignal */
  };
  service.plugin = function () { return h; };
  return service;
}

hotel.register("television", function (channel, config) {
  channel.HideAdultChannels(!config.adult);             /* call: CHANNEL.HideAdultChannels */
  return { zap: function (n) { channel.SetChannel(n); }, raw: channel };
});
