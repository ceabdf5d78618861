// CommonJS in the cover of AMD, as the team of the set-top box wrote it.
define(function (require, exports, module) {
    'use strict';
    var output = require('output');
    var last = 0;

    module.exports = {
        tune: function (radio, ms) {
            last = ms;
            radio.SetSinkLatency(ms);                          /* call: BLUETOOTH.SetSinkLatency */
            output.plugin.DelayPicture(ms);                    /* call: AUDIO.DelayPicture */
            return last;
        }
    };
});
