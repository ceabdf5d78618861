var remote = document.getElementById("remotePlugin");
var history_ = [];
var timer = null;

function meter(name, value, max, bad) {
    return "<div>" + name + ": " + value + "</div><div class='meter" + (bad ? " bad" : "") + "'><div style='width:" +
        Math.round(100 * value / max) + "%'></div></div>";
}

function showAdvice(text) {
    document.getElementById("advice").innerHTML = text;
}

function show(m) {
    document.getElementById("meters").innerHTML =
        meter("Level", m.level, 100, m.level < m.limits.level[0]) +
        meter("Quality", m.quality, 100, m.quality < 50) +
        meter("MER", m.mer, 50, m.mer < m.limits.mer);
    showAdvice(adviceFor(m));
}

function measure() {
    var m = readMeasurement();
    history_.push(m);
    if (history_.length > 20) {
        history_.shift();
    }
    show(m);
}

function record() {
    if (timer) {
        clearInterval(timer);
        timer = null;
        tuner.StopSignalLog();                                  /* call: TUNER.StopSignalLog */
    } else {
        tuner.StartSignalLog("/log/signal.csv");                /* call: TUNER.StartSignalLog */
        timer = setInterval(measure, 30);
    }
}

function sendReport() {
    var report = new Report("http://hotline.example/report");
    var band = measureBand(113, 153, 8);
    report.add("band", band.length).add("demo", demoBand().length);
    collectRights(report);
    collectGuide(report);
    collectRate(report);
    report.send(function (answer) {
        if (answer === null) {
            showAdvice("The hotline cannot be reached.");
            remote.ShowServiceCode(4711);                       /* call: REMOTE.ShowServiceCode */
        } else {
            hotline(answer);
        }
    });
}

document.getElementById("version").innerHTML = tuner.GetVersion();
remote.Open();
remote.MapServiceKey(457, "doctor");                            /* call: REMOTE.MapServiceKey */

document.onkeydown = function (e) {
    switch (e.keyCode) {
    case 403: measure(); break;
    case 404: record(); break;
    case 405: quickScan(); break;
    case 406: sendReport(); break;
    case 457:
        remote.ReadPairingInfo();                               /* call: REMOTE.ReadPairingInfo */
        break;
    case 48:
        // scan.FactoryDefaults();                              /* decoy */
        showAdvice("Factory settings are behind the password.");
        break;
    }
};
measure();
