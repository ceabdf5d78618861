(function (ko) {
  function byId(id) { return document.getElementById(id); }

  function CameraModel(name, channel, plugin) {
    this.name = name;
    this.channel = channel;
    this.plugin = plugin;
    this.moving = ko.observable(false);
  }
  CameraModel.prototype.look = function () {
    this.plugin.SelectCamera(this.channel);                    /* call: CAMERA.SelectCamera */
    this.plugin.SetNightVision(new Date().getHours() >= 0);    /* call: CAMERA.SetNightVision */
  };
  // The model of an old camera without a plug-in.
  function OldCamera(name) {
    this.name = name;
    this.look = function () {};
    this.SelectCamera = function (channel) { return channel; };
  }
  new OldCamera("shed").SelectCamera(3);                       /* decoy */

  function AlarmModel(plugins) {
    var self = this;
    this.title = ko.observable("Security");
    this.plugin = plugins.camera;
    this.armed = ko.observable(false);
    this.sensitivity = ko.observable(5);
    this.cameras = ko.observableArray([
      new CameraModel("Door", 0, plugins.camera), new CameraModel("Garden", 1, plugins.camera), new OldCamera("Shed")
    ]);
    this.current = ko.observable(this.cameras()[0]);

    this.select = function (camera) {
      self.current(camera);
      camera.look();
    };

    this.arm = function () {
      self.armed(!self.armed());
    };
    this.armed.subscribe(function (on) {
      if (on) {
        plugins.security.ArmSystem("away");                    /* call: SECURITY.ArmSystem */
      } else {
        plugins.security.DisarmSystem();                       /* call: SECURITY.DisarmSystem */
      }
    });

    this.status = ko.computed(function () {
      var camera = self.current();
      return camera.name + ": " + (self.armed() ? plugins.security.GetZoneState(1) : "-");   /* call: SECURITY.GetZoneState */
    });

    this.sensitivity.subscribe(function (value) {
      this.SetMotionThreshold(Number(value));                  /* call: CAMERA.SetMotionThreshold */
    }, this.plugin);

    this.holder = ko.observable(plugins.recorder);
    this.snapshot = function (model) {
      model.holder().StoreSnapshot(model.current().name);      /* call: RECORDER.StoreSnapshot */
    };

    this.events = ko.observableArray();
    this.events.subscribe(function (changes) {
      changes.forEach(function (change) {
        if (change.status === "added") {
          plugins.recorder.BookmarkEvent(change.value);        /* call: RECORDER.BookmarkEvent */
        }
      });
    }, null, "arrayChange");
  }

  var model = new AlarmModel({ camera: byId("camera"), security: byId("security"), recorder: byId("recorder") });
  ko.applyBindings(model);

  document.addEventListener("keydown", function (e) {
    var all = model.cameras();
    var at = all.indexOf(model.current());
    if (e.keyCode === 40) { model.select(all[(at + 1) % all.length]); }
    if (e.keyCode === 38) { model.select(all[(at + all.length - 1) % all.length]); }
    if (e.keyCode === 13) { model.arm(); }
    if (e.keyCode === 403) { model.events.push("red"); }
    if (e.keyCode === 404) { ko.unwrap(model.holder).LockRecordings(true); }   /* call: RECORDER.LockRecordings */
    if (e.keyCode === 405) { model.sensitivity(model.sensitivity() + 1); }
  });
}(ko));
