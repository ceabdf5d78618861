(function () {
  var log = { lines: [], RebootPanel: function () { this.lines.push("reboot"); } };
  var targets = { log: log };
  ["display", "power", "screen"].forEach(function (id) { targets[id] = document.getElementById(id); });

  function perform(step) {
    var target = targets[step.target];
    log.lines.push(step.method);
    return target[step.method].apply(target, step.args);      /* also: SCREEN.LockOrientation, DISPLAY.SetAntiBurnIn, POWER.DisableStandbyKey, SCREEN.FlashBorder, POWER.RebootPanel */
  }

  function slides(list) {
    var i = -1;
    (function next() {
      i = (i + 1) % list.length;
      document.getElementById("slide").textContent = list[i].text;
      if (list[i].on) { perform(list[i].on); }
      setTimeout(next, list[i].seconds * 1000);
    }());
  }

  function start(config) {
    document.title = config.name;
    config.start.forEach(perform);
    slides(config.slides);
    document.addEventListener("keydown", function (e) {
      var step = config.keys[e.keyCode];
      if (step) { perform(step); }
    });
  }

  perform(JSON.parse(document.getElementById("boot").textContent));
  loadJson("config/schedule.json", start);

  loadScript("config/panel.js", function () {
    targets.display[PANEL.brightness.method](PANEL.brightness.value);     /* also: DISPLAY.SetPanelLevel */
    targets.power[PANEL.hours.on]();                                      /* also: POWER.EnablePanel */
    window.addEventListener("pagehide", function () {
      targets.power[PANEL.hours["off"]]();                                /* also: POWER.DisablePanel */
    });
  });

  // The head office can send steps of its own.
  function office() {
    loadJson("https://office.example/panels/7.json", function (orders) {
      orders.forEach(function (order) {
        targets.display[order.method](order.value);       /* undecidable: DISPLAY */
      });
    }, function () { log.lines.push("no office"); });
    loadJson("https://office.example/power", function (order) {
      var p = document.getElementById("power");
      p[order.when === "now" ? order.method : "GetPowerState"]();       /* undecidable: POWER */
    });
  }
  setInterval(office, 200);
  office();
  targets.screen.HideCursor();                            /* call: SCREEN.HideCursor */
}());
