/* Thin classes around the plug-ins, for what the screens need. */
Portal.Inputs = function (device) { this.device = device; };
Portal.Inputs.prototype = {
    Activate: function (n) {
        this.device.SelectInput(n);
        this.device.LockAspect(n);                              /* call: HDMI.LockAspect */
    },
    Probe: function () {
        return this.device.ReadEdid(0);                         /* call: HDMI.ReadEdid */
    }
};

/* Channels of the provider's network, told like inputs. There is no cable to them. */
Portal.Virtual = function () { this.device = { LockAspect: function () {}, ReadEdid: function () { return ''; }, Tap: 0 }; };
Portal.Virtual.prototype = {
    Activate: function (n) {
        this.device.LockAspect(n);                              /* decoy */
        this.device.Tap++;
    },
    Probe: function () { return this.device.ReadEdid(0); }      /* decoy */
};

Portal.Typing = function (device) {
    this.device = device;
    this.words = [];
};
Portal.Typing.prototype.Suggest = function (word) {
    this.words.unshift(word);
    this.words = this.words.slice(0, 5);
    this.device.SetCandidates(this.words.length);               /* call: KEYBOARD.SetCandidates */
};
Portal.Typing.prototype.Learn = function () {
    this.device.TrainDictionary(this.words.join(' '));          /* call: KEYBOARD.TrainDictionary */
};
