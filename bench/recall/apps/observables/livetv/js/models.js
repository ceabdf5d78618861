// A service. The model has the names that the plug-in has, for those who know it.
var Service = MVC.Model.extend({
    Lock: function () { this.set("locked", true); },
    Unlock: function () { this.set("locked", false); },
    Rename: function (name) { this.set("name", name); },
    Promote: function () { this.set("rank", (this.get("rank") || 0) + 1); },
    toString: function () { return this.get("name") + (this.get("locked") ? " (locked)" : ""); }
});

var PayService = Service.extend({
    Unlock: function () {
        if (this.get("paid")) {
            PayService.__super__.Unlock.call(this);             /* decoy */
        }
    },
    Pay: function () {
        this.set("paid", true);
        this.Unlock();                                          /* decoy */
    }
});

// The receiver is a model around the plug-in: "device" is an attribute like others.
var Receiver = MVC.Model.extend({
    initialize: function () {
        this.on("change:service", this.Switch, this);
        this.get("device").SetZapMode("fast");                  /* call: BROADCAST.SetZapMode */
    },
    Switch: function (service) {
        var device = this.get("device");
        device.SelectService(service.get("number"));
        if (service.get("locked")) {
            device.BlankVideo(true);                            /* call: BROADCAST.BlankVideo */
        } else {
            device.Unlock(service.get("number"));               /* call: BROADCAST.Unlock */
        }
    },
    Standby: function () { this.get("device").FreeTuner(); }    /* call: BROADCAST.FreeTuner */
});

// The same shape, without a set: what the second room sees.
var Mirror = Receiver.extend({
    initialize: function () { this.on("change:service", this.Switch, this); },
    Switch: function (service) { this.get("device").Remember(service.get("name")); },        /* decoy */
    Standby: function () { this.get("device").Forget(); }       /* decoy */
});

var secondRoom = {
    seen: [],
    Remember: function (name) { this.seen.push(name); },
    Forget: function () { this.seen = []; },
    FreeTuner: function () { return this.seen.length; }
};
