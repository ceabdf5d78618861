var MotionSensor = Component.extend({
  pluginId: "PluginMotion",
  init: function (sensitivity) {
    this._super();
    this.sensitivity = sensitivity;
  },
  start: function () {
    this.plugin.Start();
    this.plugin.SetSensitivity(this.sensitivity);
    this.plugin.SelectBodyModel("adult");               /* call: MOTION.SelectBodyModel */
    this.call("SetSkeletonMode", "full");               /* call: MOTION.SetSkeletonMode */
    return this._super();
  },
  read: function () {
    return { pose: this.plugin.GetPose(), confidence: this.plugin.GetPoseConfidence() };      /* call: MOTION.GetPose, MOTION.GetPoseConfidence */
  },
  stop: function () {
    this._super();
    this.plugin.Stop();
  }
});

var CameraSensor = Component.extend({
  pluginId: "PluginCamera",
  start: function () {
    this.plugin.Open();
    this.plugin.StartPreview();
    this.plugin.MirrorImage(true);                      /* call: CAMERA.MirrorImage */
    return this._super();
  },
  blur: function (on) {
    this.call("SetBackgroundBlur", on);                 /* call: CAMERA.SetBackgroundBlur */
  },
  stop: function () {
    this._super();
    this.plugin.StopPreview();
    this.plugin.Close();
  }
});

// For sets without sensors
var FakeMotion = MotionSensor.extend({
  init: function () {
    this._super(1);
    this.plugin = {
      Start: function () { }, Stop: function () { }, SetSensitivity: function () { },
      SelectBodyModel: function () { }, SetSkeletonMode: function () { }, GetPose: function () { return 0; },
      GetPoseConfidence: function () { return 0; }
    };
  },
  read: function () { return { pose: this.plugin.GetPose(), confidence: 0 }; }      /* decoy */
});
