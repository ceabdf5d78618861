/**
 * The equalizer works on the sound chip through the plug-in. It keeps the values, because the chip does not tell them.
 */
function Equalizer(device) {
    this.device = device;
    this.bass = 0;
    this.treble = 0;
    this.balance = 0;
    this.listeners = [];
}

Equalizer.prototype.SetBass = function (level) {
    this.bass = Math.max(-10, Math.min(10, level));
    this.device.SetToneLow(this.bass);                  /* call: AUDIO.SetToneLow */
    this.Changed("bass");                               /* decoy */
};

Equalizer.prototype.SetTreble = function (level) {
    this.treble = Math.max(-10, Math.min(10, level));
    this.device.SetToneHigh(this.treble);               /* call: AUDIO.SetToneHigh */
    this.Changed("treble");                             /* decoy */
};

Equalizer.prototype.SetBalance = function (value) {
    this.balance = value;
    this.device.SetVolume(this.device.GetVolume());
    this.Changed("balance");                            /* decoy */
};

Equalizer.prototype.Changed = function (what) {
    for (var i = 0; i < this.listeners.length; i++) {
        this.listeners[i].OnSound(what, this[what]);    /* decoy */
    }
};

Equalizer.prototype.Reset = function () {
    this.SetBass(0);                                    /* decoy */
    this.SetTreble(0);                                  /* decoy */
    this.SetBalance(0);                                 /* decoy */
};

Equalizer.prototype.Load = function (preset) {
    for (var name in preset) {
        if (typeof this["Set" + name] === "function") {
            this["Set" + name](preset[name]);           /* decoy */
        }
    }
};
