/* Calibration of the picture with the light sensor. */
var Calibration = {
  channels: ["Red", "Green", "Blue"],
  values: { Red: 128, Green: 128, Blue: 128 },
  selected: 0,
  quantity: "Colour",
  display: null,
  sensor: null,

  init: function () {
    var types = ["Display", "Sensor"], i, self = this;
    for (i = 0; i < types.length; i++) {
      this[types[i].toLowerCase()] = document.getElementById("cal" + types[i]);
    }
    this.sensor.Start();
    this.sensor.SetReportInterval(100);
    this.sensor["Set" + "Averaging"](8);                /* call: LIGHTSENSOR.SetAveraging */
    this.load();
    this.table();
    document.onkeydown = function (e) { self.key(e.keyCode); };
  },

  accessor: function (verb, what) {
    return verb + what;
  },

  load: function () {
    for (var i = 0; i < this.channels.length; i++) {
      var c = this.channels[i];
      this.values[c] = this.display["Get" + c + "Gain"]() * 100;      /* call: DISPLAY.GetRedGain, DISPLAY.GetGreenGain, DISPLAY.GetBlueGain */
    }
  },

  apply: function () {
    var display = this.display, values = this.values;
    this.channels.forEach(function (c) {
      display[["Set", c, "Gain"].join("")](values[c]);  /* call: DISPLAY.SetRedGain, DISPLAY.SetGreenGain, DISPLAY.SetBlueGain */
    });
    var commit = this.accessor("Commit", "Calibration");
    display[commit]();                                  /* call: DISPLAY.CommitCalibration */
  },

  pattern: function (name) {
    var method = "show-test-pattern".replace(/(^|-)(\w)/g, function (m, dash, letter) { return letter.toUpperCase(); });
    this.display[method](name);                         /* call: DISPLAY.ShowTestPattern */
    document.getElementById("pattern").className = name;
  },

  ambient: function () {
    var level = this.sensor.GetLevel(), suffix = this.night ? "Dim" : "Bright";
    this.night = !this.night;
    this.display["Adapt" + suffix + "Room"](level);     /* call: DISPLAY.AdaptDimRoom, DISPLAY.AdaptBrightRoom */
    var colour = this.sensor["Get" + this.quantity + "Temperature"]();      /* call: LIGHTSENSOR.GetColourTemperature */
    return colour;
  },

  table: function () {
    var html = "", self = this;
    this.channels.forEach(function (c, i) {
      html += "<tr class='" + (i === self.selected ? "on" : "") + "'><td>" + c + "</td><td>" + self.values[c] + "</td></tr>";
    });
    document.getElementById("values").innerHTML = html;
  },

  key: function (code) {
    var c = this.channels[this.selected];
    switch (code) {
      case 37: this.values[c]--; break;
      case 39: this.values[c]++; break;
      case 38: this.selected = (this.selected + 2) % 3; break;
      case 40: this.selected = (this.selected + 1) % 3; break;
      case 13: this.apply(); break;
      case 403: this.pattern("bars"); break;
      case 404: this.pattern("grey"); break;
      case 405: this.ambient(); break;
      case 406: simulation["Set" + c + "Gain"](1); break;       /* decoy */
      case 457: simulation.ShowTestPattern("x"); break;         /* decoy */
      default: return;
    }
    this.table();
  }
};

var simulation = {
  gains: {},
  SetRedGain: function (v) { this.gains.Red = v; },
  SetGreenGain: function (v) { this.gains.Green = v; },
  SetBlueGain: function (v) { this.gains.Blue = v; },
  ShowTestPattern: function (n) { this.last = n; }
};

// Wizard: one step after the other. Steps are named after what the display shall do.
var wizard = {
  steps: "Reset,Measure,Store".split(","),
  names: { Reset: "ResetWhiteBalance", Measure: "MeasurePanel", Store: "StoreProfile" },      /* call: DISPLAY.ResetWhiteBalance, DISPLAY.MeasurePanel, DISPLAY.StoreProfile */
  at: 0,
  next: function () {
    var step = this.steps[this.at++];
    if (step) {
      Calibration.display[this.names[step]]();          /* also: DISPLAY.ResetWhiteBalance, DISPLAY.MeasurePanel, DISPLAY.StoreProfile */
    } else {
      clearInterval(this.timer);
    }
  },
  run: function () {
    var self = this;
    this.timer = setInterval(function () { self.next(); }, 30);
  }
};

Calibration.init();
wizard.run();
// Was: Calibration.display["Set" + "Uniformity"](0)   /* decoy */
