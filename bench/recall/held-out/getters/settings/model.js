"use strict";
var picture = {
  get plugin() { return services.display; },
  _sharpness: 10,
  get sharpness() {
    return this.plugin.GetSharpness();                  /* call: DISPLAY.GetSharpness */
  },
  set sharpness(value) {
    this._sharpness = value;
    this.plugin.SetSharpness(value);                    /* call: DISPLAY.SetSharpness */
  },
  get brightness() { return this.plugin.GetBrightness(); },
  set brightness(v) { this.plugin.SetBrightness(v); },
  get gamma() { return this.plugin.GetGammaCurve(); },      /* call: DISPLAY.GetGammaCurve */
  set gamma(v) { this.plugin.SetGammaCurve(v); },           /* call: DISPLAY.SetGammaCurve */
  reset: function () {
    this.plugin.RestoreFactoryPicture();                /* call: DISPLAY.RestoreFactoryPicture */
  }
};

var sound = Object.create({
  describe: function () { return "Volume " + this.volume + ", bass " + this.bass; }
}, {
  volume: {
    get: function () { return services.audio.GetVolume(); },
    set: function (v) { services.audio.SetVolume(v); }
  },
  bass: {
    get: function () { return services.audio.GetBass(); },        /* call: AUDIO.GetBass */
    set: function (v) { services.audio.SetBass(v); }              /* call: AUDIO.SetBass */
  },
  surround: {
    get: function () { return !!this.on; },
    set: function (on) {
      this.on = on;
      services.audio[on ? "EnableSurround" : "DisableSurround"]();    /* call: AUDIO.EnableSurround, AUDIO.DisableSurround */
    }
  }
});
Object.defineProperty(sound, "on", { writable: true, value: false });

// Settings that are only kept here, for the preview.
var preview = {
  store: {},
  SetSharpness: function (v) { this.store.sharpness = v; },
  SetBass: function (v) { this.store.bass = v; },
  get level() { return this.store.bass || 0; }
};
