// The frame that owns the devices. All other frames come here.
var isReady = false;
var waiting = [];

function ready() {
    isReady = true;
    for (var i = 0; i < waiting.length; i++) {
        waiting[i](getDevices());
    }
    document.getElementById("chn").SetBrowseMode(1);        /* call: CHANNEL.SetBrowseMode */
}

function getDevices() {
    return {
        channel: document.getElementById("chn"),
        subtitle: document.getElementById("sub"),
        clock: document.getElementById("clk")
    };
}

function whenReady(f) {
    if (isReady) {
        f(getDevices());
    } else {
        waiting.push(f);
    }
}
