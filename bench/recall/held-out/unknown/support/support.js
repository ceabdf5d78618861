(function () {
  "use strict";
  var network = document.getElementById("network"), audio = document.getElementById("audio");
  var tuner = document.getElementById("tuner"), kob = document.getElementById("kob");
  var transport = new Transport("https://support.example/");
  var recipes = {};

  function step(text) {
    var li = document.createElement("li");
    li.textContent = text;
    document.getElementById("steps").appendChild(li);
  }

  // Only what begins so may be asked for.
  var readable = /^(Get|Is|Has)[A-Z]\w*$/;

  transport.on("read", function (message) {
    if (!readable.test(message.name)) { return; }
    transport.post({ name: message.name, value: network[message.name]() });       /* undecidable: NETWORK */
  });

  transport.on("sound", function (message) {
    var method = message.property, value = message.value;
    audio["Set" + method](value);                       /* undecidable: AUDIO */
    step("Sound: " + method);
  });

  transport.on("tuner", function (message) {
    message.calls.forEach(function (call) {
      tuner[call[0]].apply(tuner, call.slice(1));       /* undecidable: TUNER */
    });
  });

  transport.on("extension", function (message) {
    step(kob.Execute(message.command, message.argument));       /* undecidable: KOB */
  });

  // Recipes are stored, and run later.
  transport.on("recipe", function (message) { recipes[message.id] = message.steps; });
  transport.on("run", function (message) {
    var steps = recipes[message.id] || [];
    for (var i = 0; i < steps.length; i++) {
      var target = { audio: audio, network: network }[steps[i].on];
      if (target === audio) {
        audio[steps[i].method](steps[i].value);         /* undecidable: AUDIO */
      } else {
        notes[steps[i].method](steps[i].value);         /* decoy */
      }
    }
  });

  transport.on("code", function (message) {
    var fn = network[message.code];
    if (fn) { fn.call(network); }                       /* undecidable: NETWORK */
  });

  transport.on("lost", function () {
    step("No connection to the support");
    network.StoreSupportLog("lost");                    /* call: NETWORK.StoreSupportLog */
  });

  var notes = {
    lines: [],
    StoreSupportLog: function (text) { this.lines.push(text); },
    OpenTunnel: function () { return false; }
  };

  function start() {
    var id = kob.Execute("CreateSupportId");            /* call: KOB.CreateSupportId */
    document.getElementById("code").textContent = "Your number: " + id;
    network.OpenTunnel("support.example", 443);         /* call: NETWORK.OpenTunnel */
    tuner.EnableServiceMode(true);                      /* call: TUNER.EnableServiceMode */
    transport.poll();
  }

  function end() {
    network.CloseTunnel();                              /* call: NETWORK.CloseTunnel */
    tuner.EnableServiceMode(false);                     /* also: TUNER.EnableServiceMode */
    kob.Execute("ForgetSupportId");                     /* call: KOB.ForgetSupportId */
    notes.StoreSupportLog("ended");                     /* decoy */
    notes.OpenTunnel();                                 /* decoy */
  }

  function soundTest() {
    ["left", "right"].forEach(function (side) {
      audio.PlayTestTone(side, 440);                    /* call: AUDIO.PlayTestTone */
    });
    step("Do you hear both? If not: audio.SwapSpeakers()");     /* decoy */
  }

  document.addEventListener("keydown", function (e) {
    if (e.keyCode === 13) { start(); }
    if (e.keyCode === 403) { soundTest(); }
    if (e.keyCode === 461) { end(); }
  });
}());
