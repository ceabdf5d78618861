var scene = new Menu();
scene.draw();
document.onkeydown = function (e) {
  if (e.keyCode == 457 && scene.share) {
    scene.share();
  } else {
    scene = scene.key(e.keyCode);
  }
  scene.draw();
};
var fake = new FakeMotion().start();
fake.call("SetSkeletonMode", "none");                   /* decoy */
fake.read();
/* camera.plugin.RecordWorkout() needs a licence */     /* decoy */
