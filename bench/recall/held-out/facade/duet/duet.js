(function () {
  var singers = [{ name: "You", side: -50, points: 0 }, { name: "Partner", side: 50, points: 0 }];
  var running = false, timer = null, tune = false;

  // Draws; "pan" here moves the picture of a singer.
  var stage = {
    SetPan: function (i, side) { singers[i].x = 400 + side * 4; },
    CloseMixer: function () { this.closed = true; },
    draw: function () {
      document.getElementById("stage").innerHTML = singers.map(function (s) {
        return "<p style='margin-left:" + (s.x || 0) + "px'>" + s.name + " " + s.points + "</p>";
      }).join("");
    }
  };

  function begin() {
    if (running) { return; }
    running = true;
    Sound.begin(singers.length);
    singers.forEach(function (s, i) {
      Sound.place(i, s.side);
      stage.SetPan(i, s.side);                          /* decoy */
    });
    Link.connect("partner-1");
    timer = setInterval(beat, 50);
    beat();
  }

  function beat() {
    singers[0].points += Sound.level() > 0 ? 1 : 0;
    Link.send({ points: singers[0].points, latency: Link.latency("partner-1") });
    stage.draw();
  }

  function end() {
    if (!running) { return; }
    running = false;
    clearInterval(timer);
    Sound.end();
    stage.CloseMixer();                                 /* decoy */
    Sound.raw.PlayApplause(3);                          /* call: AUDIO.PlayApplause */
    document.title = "mic.SaveTake() is for members";   /* decoy */
  }

  document.onkeydown = function (e) {
    switch (e.keyCode) {
      case 13: case 415: begin(); break;
      case 403: tune = !tune; Sound.tune(tune); break;
      case 461: case 413: end(); break;
    }
  };
  stage.draw();
}());
