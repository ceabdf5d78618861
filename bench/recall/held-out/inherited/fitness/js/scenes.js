var Scene = Component.extend({
  title: "",
  draw: function () { document.getElementById("scene").innerHTML = "<h1>" + this.title + "</h1>" + this.body(); },
  body: function () { return ""; },
  key: function (code) { return this; }
});

var Menu = Scene.extend({
  title: "Coach",
  index: 0,
  exercises: ["Lunges", "Plank", "Rowing"],
  body: function () {
    var self = this;
    return this.exercises.map(function (e, i) { return (i == self.index ? "> " : "") + e; }).join("<br>");
  },
  key: function (code) {
    if (code == 38) { this.index = (this.index + 2) % 3; }
    if (code == 40) { this.index = (this.index + 1) % 3; }
    return code == 13 ? new Workout(this.exercises[this.index]) : this;
  }
});

var Workout = Scene.extend({
  pluginId: "PluginPlayer",
  init: function (exercise) {
    this._super();
    this.title = exercise;
    this.count = 0;
    this.sensor = new MotionSensor(3).start();
    this.camera = new CameraSensor().start();
    this.plugin.Open("video/" + exercise + ".mp4");
    this.plugin.Play();
    this.plugin.SetPictureInPicture("camera");          /* call: PLAYER.SetPictureInPicture */
    var self = this;
    this.timer = setInterval(function () { self.tick(); }, 50);
    this.tick();
  },
  body: function () { return "<p>" + this.count + "</p>"; },
  tick: function () {
    var pose = this.sensor.read();
    if (pose.confidence > 0.5) { this.count++; }
    if (this.count > 0) { this.sensor.plugin.ResetPose(); }       /* call: MOTION.ResetPose */
    this.draw();
  },
  key: function (code) {
    var scene = this;
    switch (code) {
      case 403: this.camera.blur(true); break;
      case 404: this.camera.plugin.SetOverlay("skeleton"); break;     /* call: CAMERA.SetOverlay */
      case 405: this.plugin.LoopSection(10, 20); break;               /* call: PLAYER.LoopSection */
      case 406: this.LoopSection(1, 2); break;                        /* decoy */
      case 461: this.stop(); scene = new Menu(); break;
    }
    return scene;
  },
  LoopSection: function (from, to) { this.section = [from, to]; },
  stop: function () {
    this._super();
    clearInterval(this.timer);
    this.sensor.stop();
    this.camera.stop();
    this.plugin.Stop();
  }
});

var Sharing = { share: function () { return this.plugin.ExportClip(this.title); } };      /* call: PLAYER.ExportClip */
Component.mixin(Workout, Sharing);
