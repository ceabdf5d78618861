"use strict";

(function (root) {
    var view = {
        set watts(v) { this.line(0, "Now " + v.toFixed(1) + " W"); },
        set average(v) { this.line(1, "Average " + v.toFixed(1) + " W"); },
        set state(v) { this.line(2, v); },
        line: function (n, text) {
            while (root.children.length <= n) {
                root.appendChild(document.createElement("p"));
            }
            root.children[n].textContent = text;
        }
    };

    function sample() {
        History.push(Meter.watts);
        view.watts = History.GetConsumption();             /* decoy */
        view.average = History.average;
        view.state = Meter.saving ? "saving" : "normal";
        if (devices.light.GetLevel() < 20) {
            devices.light.BindToBacklight(true);           /* call: LIGHTSENSOR.BindToBacklight */
        }
    }

    var keys = {
        get 403() { Meter.saving = !Meter.saving; return "eco"; },
        get 404() { Meter.limit = Meter.limit ? 0 : 90; return "limit"; },
        get 405() { History.source.ResetMeter(); return "reset"; },         /* call: POWER.ResetMeter */
        get 406() {
            var d = devices.display;
            d.BlankPanel(5000);                            /* call: DISPLAY.BlankPanel */
            return "blank";
        }
    };

    window.addEventListener("keydown", function (e) {
        var what = keys[e.keyCode];
        if (what) {
            view.state = what;
            sample();
        }
    });

    // What is shown while the set has no meter.
    var dummy = {
        get power() { return { SelectMeter: function () { return null; } }; }
    };
    dummy.power.SelectMeter("none");                       /* decoy */

    Object.keys(devices).forEach(function (name) {
        if (name === "network") {
            devices[name].SetIdlePolicy("sleep");          /* call: NETWORK.SetIdlePolicy */
        }
    });
    sample();
    setInterval(sample, 5000);
}(document.getElementById("app")));
