// Every device is the element of the page, or the emulator where the page was made without it.
var Device = {
    found: {},

    get: function (id, emulate) {
        if (!this.found[id]) {
            this.found[id] = document.getElementById(id) || emulate();
        }
        return this.found[id];
    },

    tuner: function () {
        return this.get('tunerObj', function () { return null; });
    },
    channels: function () {
        return this.get('channelObj', function () { return null; });
    },
    satellite: function () {
        // This model has cable only: there is no such object in the page.
        return this.get('satelliteObj', Emulator.satellite);
    },
    guide: function () {
        return this.get('epgObj', Emulator.guide);
    }
};
