define('output', ['require', 'exports'], function (require, exports) {
    var audio = document.getElementById('au');
    exports.plugin = audio;
    exports.route = function (address) {
        audio.SetOutputMode('bluetooth');
        audio.RouteToDevice(address);                          /* call: AUDIO.RouteToDevice */
    };
    exports.back = function () {
        audio.RouteToSpeakers();                               /* call: AUDIO.RouteToSpeakers */
    };
});
