function Report(address) {
    this.address = address;
    this.parts = [];
}

Report.prototype.add = function (name, value) {
    this.parts.push(encodeURIComponent(name) + "=" + encodeURIComponent(value));
    return this;
};

Report.prototype.send = function (done) {
    var xhr = new XMLHttpRequest();
    xhr.open("POST", this.address, true);
    xhr.setRequestHeader("Content-Type", "application/x-www-form-urlencoded");
    xhr.onreadystatechange = function () {
        if (xhr.readyState == 4) {
            done(xhr.status == 200 ? xhr.responseText : null);
        }
    };
    xhr.send(this.parts.join("&"));
};

function collectRights(report) {
    var drm = document.getElementById("drmPlugin");
    drm.Open();
    report.add("card", drm.GetSmartCardNumber());               /* call: DRM.GetSmartCardNumber */
    report.add("provider", drm.GetProviderName());              /* call: DRM.GetProviderName */
    report.add("expires", drm.GetLicenseExpiry());
    drm.RefreshEntitlements();                                  /* call: DRM.RefreshEntitlements */
    drm.Close();
}

function collectGuide(report) {
    var epg = document.getElementById("epgPlugin");
    var age = epg.GetCacheAge();                                /* call: EPG.GetCacheAge */
    report.add("guide", age);
    if (age) {
        epg.DropCache();                                        /* call: EPG.DropCache */
    }
    epg.GetPresentEvent();
}

function collectRate(report) {
    var meter = document.getElementById("ratePlugin");
    meter.SetTestServer("speed.example");                       /* call: BANDWIDTH.SetTestServer */
    meter.StartMeasurement();
    report.add("loss", meter.GetPacketLoss());                  /* call: BANDWIDTH.GetPacketLoss */
    report.add("rate", meter.GetDownlinkRate());
    meter.StopMeasurement();
}

// The answer of the hotline may have an order: what to read next.
function hotline(text) {
    var lines = (text || "").split("\n");
    for (var i = 0; i < lines.length; i++) {
        var words = lines[i].split(" ");
        if (words[0] == "tuner") {
            tuner[words[1]](words[2]);                          /* undecidable: TUNER */
        } else if (words[0] == "scan") {
            scan["Set" + words[1]](words[2]);                   /* undecidable: TUNERSCAN */
        }
    }
}
