Bus.on('hdmi:ready', function (device) {
    device.ForceHotplug(1);                         /* call: HDMI.ForceHotplug */
    device.Relabel(1, 'Box');                       /* call: HDMI.Relabel */
});

Bus.on('power:ready', function (device) {
    device.SetSleepTimer(0);
    device.SetLevel(1);                             /* call: POWER.SetLevel */
});

// "Flash" is the name of the lamp's method as well as of the toast's.
Bus.on('power:alert', function (device, times) {
    var lamp = device;
    while (times--) {
        lamp.Flash(100);                            /* call: POWER.Flash */
    }
});

var Statistics = {
    counts: {},
    Count: function (channel) { this.counts[channel] = (this.counts[channel] || 0) + 1; },
    Report: function (to) { to.Collect(this.counts); }          /* decoy */
};
['input:changed', 'power:alert'].forEach(function (channel) {
    Bus.on(channel, function () { this.Count(channel); }, Statistics);      /* decoy */
});

Bus.on('input:changed', function (n) {
    this.EnableArc(n === 2);                        /* call: HDMI.EnableArc */
}, document.getElementById('hdmi'));
