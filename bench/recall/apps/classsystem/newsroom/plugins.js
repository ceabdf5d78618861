var Device = Class.extend({
  id: null,

  init: function () {
    this.plugin = document.getElementById(this.id);
    this.setUp();
  },

  setUp: function () {},

  log: function (text) {
    if (window.console) {
      console.log(this.id + ": " + text);
    }
  }
});

var PlayerDevice = Device.extend({
  id: "pl",

  setUp: function () {
    this._super();
    this.plugin.SetErrorConcealment(2);   /* call: PLAYER.SetErrorConcealment */
  },

  open: function (url) {
    this.plugin.Open(url);
    this.plugin.Play();
    this.log("open " + url);
  },

  close: function () {
    this.plugin.Stop();
    this.plugin.Close();
  }
});

var AdaptivePlayer = PlayerDevice.extend({
  init: function (bandwidth) {
    this.bandwidth = bandwidth;
    this._super();
  },

  open: function (url) {
    var rate = this.bandwidth.plugin.GetAverageRate();
    this.plugin.SetRepresentation(rate > 3000 ? "hd" : "sd");   /* call: PLAYER.SetRepresentation */
    this._super(url);
    this.plugin.EnableAdaptation(true);   /* call: PLAYER.EnableAdaptation */
  },

  close: function () {
    this.plugin.ReportQoe(Date.now());   /* call: PLAYER.ReportQoe */
    this._super();
  }
});

var BandwidthDevice = Device.extend({
  id: "bw",
  setUp: function () {
    this.plugin.StartMeasurement();
    this.plugin.SetSmoothing(0.8);   /* call: BANDWIDTH.SetSmoothing */
  }
});

var SubtitleDevice = Device.extend({
  id: "st",
  toggle: function () {
    this.visible = !this.visible;
    this.plugin[this.visible ? "Show" : "Hide"]();
    this.plugin.SetBackgroundBox(this.visible);   /* call: SUBTITLE.SetBackgroundBox */
  }
});

var NullPlayer = PlayerDevice.extend({
  init: function () { this.plugin = { EnableAdaptation: function () {}, ReportQoe: function () {} }; },
  open: function () { this.plugin.EnableAdaptation(false); },   /* decoy */
  close: function () { this.plugin.ReportQoe(0); }   /* decoy */
});
