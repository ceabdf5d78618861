/* One object for all that the set can do. Sets before 2012 lack some of it. */
var TV = (function () {
    "use strict";

    var nodes = {};

    function node(kind) {
        var key = kind.toLowerCase();
        if (!nodes[key]) {
            nodes[key] = document.createElement("object");
            nodes[key].setAttribute("classid", "clsid:MORVANE-NAVERTIX-" + kind);
            document.getElementById("devices").appendChild(nodes[key]);
        }
        return nodes[key];
    }

    function supports(plugin, method) {
        return plugin !== null && typeof plugin[method] !== "undefined";
    }

    function attempt(kind, method) {
        var plugin = node(kind), args = Array.prototype.slice.call(arguments, 2);
        if (!supports(plugin, method)) {
            return null;
        }
        return Retry.call(plugin[method], plugin, args);                 /* also: HAPTIC.PulseOnce, NETWORK.LocateByAddress, SECURITY.AuthorizePayment, SECURITY.LogBooking, NETWORK.SetQosHint */
    }

    var instance;

    function Facade() {
        if (instance) {
            return instance;
        }
        instance = this;
        this.locale = Retry.wrap(node("LOCALE"), ["GetLanguage", "GetRegionCode"]);   /* also: LOCALE.GetRegionCode */
        this.motion = node("MOTION");
    }

    Facade.prototype = {
        vibrate: function (ms) {
            attempt("HAPTIC", "PulseOnce", ms);                     /* also: HAPTIC.PulseOnce */
        },
        location: function () {
            var region = this.locale.GetRegionCode();               /* also: LOCALE.GetRegionCode */
            return attempt("NETWORK", "LocateByAddress", region) || region;    /* also: NETWORK.LocateByAddress */
        },
        pay: function (cents) {
            attempt("SECURITY", "CheckPin", "0000");
            return attempt("SECURITY", "AuthorizePayment", cents) > 0;      /* also: SECURITY.AuthorizePayment */
        },
        tilt: function (callback) {
            var motion = this.motion;
            if (motion.SetTiltHandler) {
                motion.SetTiltHandler(callback);                    /* call: MOTION.SetTiltHandler */
            } else {
                motion.Start();
            }
            return this;
        },
        idle: function (seconds) {
            var screen = node("SCREEN");
            screen.SetScreenSaver(seconds > 0);
            (screen.SetIdleTime || function () {}).call(screen, seconds);   /* call: SCREEN.SetIdleTime */
            return this;
        },
        version: function () {
            return "2.1";
        }
    };

    return { get: function () { return new Facade(); }, attempt: attempt };
}());
