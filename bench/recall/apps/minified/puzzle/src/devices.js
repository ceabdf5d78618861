function device(id) {
    var node = document.getElementById(id);
    return {
        node: node,
        send: function (method) {
            return node[method].apply(node, [].slice.call(arguments, 1));   /* call: HAPTIC.Pulse, HAPTIC.SetWaveform */
        }
    };
}

var haptic = device("hap");

var watch = {
    clock: document.getElementById("clk"),
    begin: function () {
        this.clock.StartStopwatch();                    /* call: CLOCK.StartStopwatch */
    },
    read: function () {
        return this.clock.ReadStopwatch();              /* call: CLOCK.ReadStopwatch */
    },
    lap: function () {
        with_clock(function (clock) {
            clock.MarkLap();                            /* call: CLOCK.MarkLap */
        });
    }
};

function with_clock(f) {
    f(watch.clock);
}
