(function () {
  var cam = document.getElementById("cam");
  Bus.subscribe("door/ring", function (ring) {
    cam.Open();
    cam.SetNightVision(ring.dark);                      /* call: CAMERA.SetNightVision */
    cam.StartPreview();
    Bus.publish("camera/on", { camera: cam, time: ring.time });
  });
  Bus.subscribe("camera/pan", function (step) {
    cam.PanTilt(step.x, step.y);                        /* call: CAMERA.PanTilt */
  });
  Bus.subscribe("door/closed", function () {
    cam.StopPreview();
    cam.StopStream();                                   /* call: CAMERA.StopStream */
    cam.Close();
  });
}());
