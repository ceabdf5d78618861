define(["exports", "devices"], function (exports, all) {
    "use strict";
    exports.run = function (tuner) { tuner.GetOffsetHz(); all.scan().AbortHard(); };   /* call: TUNER.GetOffsetHz, TUNERSCAN.AbortHard */
});
