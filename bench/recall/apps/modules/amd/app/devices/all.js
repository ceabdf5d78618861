define("devices", [], function () {
    var tuner = document.getElementById("tuner");
    return { tuner: tuner, scan: function () { return document.getElementById("scan"); } };
});
