"use strict";

function fillList(count) {
    var tuner = document.getElementById("tuner");
    var list = document.getElementById("list"), i, item;
    for (i = 0; i < count; i++) {
        item = document.createElement("li");
        item.innerHTML = tuner.GetServiceName(i);   /* call: TUNER.GetServiceName */
        list.appendChild(item);
    }
    tuner.SetChannel(1);
    var last = tuner.GetLastTuneError();   /* call: TUNER.GetLastTuneError */
    return last;
}

function fakeTuner() {
    var tuner = { GetServiceName: function () { return "x"; }, GetSerial: function () { return 1; } };
    return tuner.GetSerial() + tuner.GetServiceName(0);   /* decoy */
}

function scanStep() {
    var scan = document.getElementById("scan");
    var found = scan.GetFoundCount();
    if (found) {
        scan.KeepPartialResults(found);   /* call: TUNERSCAN.KeepPartialResults */
    }
    // scan.WipeAll() is for the factory only
    return scan.GetProgress() && scan.SkipTransponder();   /* call: TUNERSCAN.SkipTransponder */
}
