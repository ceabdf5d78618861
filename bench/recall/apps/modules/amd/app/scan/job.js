define(function (require, exports, module) {
    var devices = require("devices"), current;
    exports.start = function (p) {
        current = p;
        p.Start();
        p.SetDwellTime(200);   /* call: TUNERSCAN.SetDwellTime */
        devices.tuner.BypassLna(1);   /* call: TUNER.BypassLna */
    };
    exports.on = function (fn) { fn(current); };
    module.exports.fake = { BypassLna: function () { } };
    module.exports.fake.BypassLna();   /* decoy */
});
