function plugin(name) {
  return document.getElementById("light" + name.charAt(0).toUpperCase() + name.slice(1));
}

function Lamp(name, address, bridge) {
  var self = this;
  self.name = name;
  self.address = address;
  self.lit = ko.observable(false);
  self.level = ko.observable(100).extend({ rateLimit: 10 });
  self.lit.subscribe(function (on) {
    bridge.WriteBytes([address, on ? 1 : 0]);
    bridge.AwaitAck(address, 100);                      /* call: SERIALPORT.AwaitAck */
  });
  self.level.subscribe(function (level) {
    bridge.SendDimLevel(address, level);                /* call: SERIALPORT.SendDimLevel */
  });
}
// Scenes of lamps are also called ambilight; this is ours.
Lamp.prototype.SetAmbilight = function (color) { this.color = color; };

function ViewModel() {
  var self = this;
  self.display = plugin("display");
  self.sensor = plugin("sensor");
  self.serial = plugin("serial");
  self.title = ko.observable("Lights");
  self.ambient = ko.observable(0);
  self.lamps = ko.observableArray([]);
  self.scenes = { cinema: 10, dinner: 40, work: 90 };

  self.bright = ko.computed({
    read: function () { return self.ambient() > 50; },
    write: function (on) { self.display.SetDynamicBacklight(on); }      /* call: DISPLAY.SetDynamicBacklight */
  });

  self.litCount = ko.pureComputed(function () {
    return ko.utils.arrayFilter(self.lamps(), function (lamp) { return lamp.lit(); }).length;
  });
  self.litCount.subscribe(function (n) {
    self.title("Lights (" + n + ")");
    self.display.SetAmbilight(n > 0);                   /* call: DISPLAY.SetAmbilight */
  });

  self.toggle = function (lamp) { lamp.lit(!lamp.lit()); };

  self.scene = function (name) {
    ko.utils.arrayForEach(self.lamps(), function (lamp) {
      lamp.SetAmbilight(name);                          /* decoy */
      lamp.level(self.scenes[name]);
      lamp.lit(true);
    });
    self.display["Set" + name.replace(/^./, function (c) { return c.toUpperCase(); }) + "Scene"]();     /* call: DISPLAY.SetCinemaScene, DISPLAY.SetDinnerScene, DISPLAY.SetWorkScene */
  };

  self.measure = function () {
    self.ambient(self.sensor.GetAmbientLevel());        /* call: LIGHTSENSOR.GetAmbientLevel */
  };
}

ViewModel.prototype.init = function () {
  var self = this, names = { Sofa: 3, Table: 4, Desk: 9 };
  self.serial.Open("bridge");
  self.serial.SetParity("even");
  self.serial.EnableCrc(true);                          /* call: SERIALPORT.EnableCrc */
  for (var name in names) {
    self.lamps.push(new Lamp(name, names[name], self.serial));
  }
  self.sensor.Start();
  self.sensor.SetThreshold(20);
  self.timer = setInterval(self.measure, 100);
  return self;
};

var vm = new ViewModel().init();
ko.applyBindings(vm);

ko.bindingHandlers.glow = {
  update: function (el, value) { el.style.opacity = ko.unwrap(value()) / 100; }
};

var scenesByKey = { 49: "cinema", 50: "dinner", 51: "work" };
document.addEventListener("keydown", function (e) {
  if (scenesByKey[e.keyCode]) { vm.scene(scenesByKey[e.keyCode]); }
  if (e.keyCode === 13) { vm.toggle(vm.lamps()[0]); }
  if (e.keyCode === 403) { vm.bright(true); }
  if (e.keyCode === 404) {
    ko.when(function () { return vm.ambient() > 0; }, function () {
      vm.sensor.LockExposure();                         /* call: LIGHTSENSOR.LockExposure */
    });
  }
  if (e.keyCode === 405) { vm.title("sensor.SelfTest()"); }     /* decoy */
});
