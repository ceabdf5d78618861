var tuner = document.getElementById("tunerPlugin");
var scan = document.getElementById("scanPlugin");

function readMeasurement() {
    var source = tuner.GetSource();
    var m = {
        time: new Date(),
        source: LIMITS[source] ? source : "DVB-C",
        level: tuner.GetSignalLevel(),
        quality: tuner.GetSignalQuality()
    };
    m.ber = tuner.GetBitErrorRate();                            /* call: TUNER.GetBitErrorRate */
    m.mer = tuner.GetModulationError();                         /* call: TUNER.GetModulationError */
    m.lock = tuner.IsFrontendLocked();                          /* call: TUNER.IsFrontendLocked */
    m.limits = LIMITS[m.source];
    return m;
}

function measureBand(first, last, step) {
    var values = [];
    tuner.EnterMeasureMode();                                   /* call: TUNER.EnterMeasureMode */
    for (var f = first; f <= last; f += step) {
        tuner.SetFrequency(f);
        values.push({ f: f, level: tuner.MeasureAt(f) });       /* call: TUNER.MeasureAt */
    }
    tuner.LeaveMeasureMode();                                   /* call: TUNER.LeaveMeasureMode */
    return values;
}

function quickScan() {
    scan.SetScanRange(113, 858);
    scan.SetFastScan(true);                                     /* call: TUNERSCAN.SetFastScan */
    scan.Start();
    window.setTimeout(function () {
        var lost = scan.CompareWithLast();                      /* call: TUNERSCAN.CompareWithLast */
        showAdvice(lost + " programmes are lost since the last search.");
        scan.Stop();
    }, 20);
}

// The demo of the shop has a tuner of its own.
var demoTuner = {
    level: 60,
    EnterMeasureMode: function () { this.level = 61; },
    LeaveMeasureMode: function () { this.level = 60; }
};

function demoBand() {
    demoTuner.EnterMeasureMode();                               /* decoy */
    var values = [{ f: 113, level: demoTuner.level }];
    demoTuner.LeaveMeasureMode();                               /* decoy */
    return values;
}
