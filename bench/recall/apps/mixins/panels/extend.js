function extend(target) {
    for (var i = 1; i < arguments.length; i++) {
        for (var key in arguments[i]) {
            if (Object.prototype.hasOwnProperty.call(arguments[i], key)) {
                target[key] = arguments[i][key];
            }
        }
    }
    return target;
}

var Fading = {
    FadeTo: function (level) { this.node.style.opacity = level / 100; this.faded = level; },
    FadeOut: function () { this.FadeTo(0); }                    /* decoy */
};

var Ticking = {
    Tick: function () { this.ticks = (this.ticks || 0) + 1; this.Render(); },       /* decoy */
    StartTicking: function (ms) {
        var self = this;
        this.ticker = setInterval(function () { self.Tick(); }, ms);                /* decoy */
    },
    StopTicking: function () { clearInterval(this.ticker); }
};

// A panel that leans on something of the set. `backend` is set by who mixes it in.
var Backed = {
    AskBackend: function (name, value) {
        return this.backend[name](value);       /* call: CLOCK.GetNtpDrift, CLOCK.SyncNow, SCREEN.GetPanelHours */
    }
};
