function createElementFor(kind, id) {
    var o = document.createElement("object");
    o.setAttribute("classid", "clsid:MORVANE-NAVERTIX-" + kind);
    o.id = id;
    document.body.appendChild(o);
    return o;
}
var Factory = {
    make: function (kind) {
        switch (kind) {
            case "light": return document.getElementById("ls");
            case "radio": return document.getElementById("bt");
            default: return createElementFor(kind, "made" + kind);
        }
    }
};
Container
    .register("sensor", function () { return Factory.make("light"); })
    .register("radio", function () { return Factory.make("radio"); })
    .register("haptic", function () { return createElementFor("HAPTIC", "hp"); })
    .register("lamp", function (sensor) {
        sensor.Start();
        sensor.SetGainStage(4);   /* call: LIGHTSENSOR.SetGainStage */
        return { dim: function (n) { sensor.EmitPulse(n); } };   /* call: LIGHTSENSOR.EmitPulse */
    })
    .register("remote", ["radio", "haptic"].length && needs(["radio", "haptic"], function (a, b) {
        a.SetScanWindow(30);   /* call: BLUETOOTH.SetScanWindow */
        b.SetWaveform([1, 0, 1]);   /* call: HAPTIC.SetWaveform */
        return { buzz: function () { b.Play(); b.BuzzExact(12); }, radio: function () { return a; } };   /* call: HAPTIC.BuzzExact */
    }));
function needs(list, fn) { fn.$needs = list; return fn; }
