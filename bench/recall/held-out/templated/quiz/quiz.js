(function () {
  var state = { index: 0, points: 0, done: false };
  var box = document.getElementById("quiz");
  var plugins = { buzz: document.getElementById("buzz"), pads: document.getElementById("pads") };
  var timer;

  function show() {
    clearTimeout(timer);
    state.index = Math.max(0, state.index);
    if (state.index >= QUESTIONS.length) {
      state.done = true;
      box.innerHTML = template("result-template", { points: state.points, plugins: plugins });
      return;
    }
    var question = QUESTIONS[state.index];
    box.innerHTML = template("question-template", {
      text: question.text, answers: question.answers, plugins: plugins, last: state.index === QUESTIONS.length - 1
    });
    Array.prototype.forEach.call(box.querySelectorAll(".answer"), function (button) {
      button.onclick = function () { answer(parseInt(button.getAttribute("data-index"), 10)); };
    });
    timer = setTimeout(timeout, 150);
  }

  function timeout() {
    plugins.buzz.PlayTimeout(300);                      /* call: HAPTIC.PlayTimeout */
    next();
  }

  function answer(i) {
    if (!QUESTIONS[state.index]) { return; }
    var right = QUESTIONS[state.index].right === i;
    state.points += right ? 10 : 0;
    var effect = right ? "PlaySuccess" : "PlayFailure";       /* call: HAPTIC.PlaySuccess, HAPTIC.PlayFailure */
    plugins.buzz[effect](i);                            /* also: HAPTIC.PlaySuccess, HAPTIC.PlayFailure */
    plugins.pads.SetPadColor(0, right ? "green" : "red");     /* call: GAMEPAD.SetPadColor */
    scores.PlaySuccess(right);                          /* decoy */
    next();
  }

  function next() {
    state.index++;
    show();
  }

  var scores = {
    n: 0,
    PlaySuccess: function (yes) { this.n += yes ? 1 : 0; },
    SetPadColor: function (c) { this.color = c; }
  };

  function restart() {
    state = { index: -1, points: 0, done: false };
    plugins.pads.Open();
    plugins.pads.AssignPlayers(plugins.pads.GetPadCount());   /* call: GAMEPAD.AssignPlayers */
    scores.SetPadColor("white");                        /* decoy */
    box.innerHTML = `<p onclick="document.getElementById('pads').BlinkAll(${QUESTIONS.length})">Start plugins.pads.BlinkAll</p>`;    /* text: GAMEPAD.BlinkAll */
    timer = setTimeout(show, 200);
  }

  document.addEventListener("keydown", function (e) {
    if (e.keyCode === 413) {
      restart();
    } else if (!state.done && e.keyCode >= 49 && e.keyCode <= 51) {
      answer(e.keyCode - 49);
    }
  });
  // Two players: plugins.pads.SwapPlayers()            /* decoy */
  restart();
}());
