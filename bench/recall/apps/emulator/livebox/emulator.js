// Stands for what a box lacks, so that the menu can be shown everywhere. Same names as the box has.
var Emulator = (function () {
    function log(what) {
        document.getElementById('log').innerHTML += what + '<br>';
    }

    function Satellite() { this.position = 19.2; this.voltage = 0; }
    Satellite.prototype = {
        MoveDish: function (to) { this.position = to; log('dish ' + to); },
        SetLnbVoltage: function (v) { this.voltage = v; },
        GetDishPosition: function () { return this.position; },
        SendDiseqc: function (bytes) { return bytes.length; },
        SetSource: function () {}
    };

    function Guide() { this.events = [{ title: 'News' }, { title: 'Film' }]; }
    Guide.prototype = {
        ListAll: function () { return this.events; },
        Rebuild: function () { this.events.reverse(); },
        GetPresentEvent: function () { return this.events[0]; }
    };

    return {
        satellite: function () { return new Satellite(); },
        guide: function () { return new Guide(); }
    };
}());
