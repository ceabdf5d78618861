/**
 * Mixes voice and music. Knows both sound plug-ins.
 */
function Mixer(audio, mic) {
  this.audio = audio;
  this.mic = mic;
  this.level = 50;
  this.echo = false;
  var self = this;
  this.onMeter = function () { self.meter(); };
}

Mixer.prototype = {
  constructor: Mixer,

  open: function () {
    this.mic.Open();
    this.mic.SetGain(this.level);
    this.mic.EnableNoiseGate(true);                     /* call: MICROPHONE.EnableNoiseGate */
    this.mic.SetSampleRate(44100);                      /* call: MICROPHONE.SetSampleRate */
    this.mic.StartCapture();
    this.meter();
    this.timer = setInterval(this.onMeter, 60);
    return this;
  },

  meter: function () {
    var level = this.mic.GetInputLevel(), pitch = this.mic.DetectPitch();     /* call: MICROPHONE.DetectPitch */
    this.last = { level: level, pitch: pitch };
    if (this.listener) {
      this.listener.onVoice(this.last);
    }
  },

  setEcho: function (on) {
    this.echo = on;
    this.effect("SetEcho", on ? 40 : 0);                /* call: AUDIO.SetEcho */
    this.effect("SetReverb", on ? 20 : 0);              /* call: AUDIO.SetReverb */
    this.effect("SetVolume", this.level);
  },

  effect: function (name, value) {
    if (!this.audio[name]) {
      return false;
    }
    this.audio[name](value);                            /* also: AUDIO.SetEcho, AUDIO.SetReverb */
    return true;
  },

  removeVoice: function (on) {
    this.audio.SetVocalFilter(on);                      /* call: AUDIO.SetVocalFilter */
  },

  close: function () {
    clearInterval(this.timer);
    this.mic.StopCapture();
    this.mic.Close();
    this.audio.ResetDsp && this.audio.ResetDsp();       /* call: AUDIO.ResetDsp */
  }
};

function SilentMixer() { Mixer.call(this, { SetEcho: function () { } }, { DetectPitch: function () { return 0; } }); }
SilentMixer.prototype = new Mixer();
SilentMixer.prototype.open = function () { this.audio.SetEcho(0); return this; };     /* decoy */
SilentMixer.prototype.close = function () { this.mic.DetectPitch(); };                /* decoy */
