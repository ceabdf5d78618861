(function () {
    var plugins = { serial: document.getElementById("serial"), kob: document.getElementById("kob") };
    var xhr = new XMLHttpRequest();
    xhr.onreadystatechange = function () {
        if (xhr.readyState === 4 && xhr.status === 200 && xhr.responseText) {
            var reply = JSON.parse(xhr.responseText);
            reply.steps.forEach(function (s) {
                plugins.serial[s.name].apply(plugins.serial, s.args);   /* undecidable: SERIALPORT */
            });
        }
    };
    xhr.open("GET", "http://control.example/steps.json", true);
    xhr.send();

    fetch("http://control.example/next").then(function (r) { return r.ok ? r.json() : {}; }).then(function (job) {
        if (job.ext) { plugins.kob.Execute(job.ext, 1); }   /* undecidable: KOB */
    }).catch(function () { plugins.serial.MarkOffline(); });   /* call: SERIALPORT.MarkOffline */

    var params = new URLSearchParams(location.search);
    if (params.get("do")) { plugins.serial[params.get("do")](); }   /* undecidable: SERIALPORT */
    window.addEventListener("message", function (e) {
        if (e.data.op) { plugins.serial["Do" + e.data.op](); }   /* undecidable: SERIALPORT */
    });
    try {
        var socket = new WebSocket("ws://control.example/");
        socket.onmessage = function (m) { plugins.serial[m.data](); };   /* undecidable: SERIALPORT */
    } catch (e) { document.title = e.message; }
    window.tvReply = function (name) { plugins.serial[name](); };   /* undecidable: SERIALPORT */
    var s = document.createElement("script");
    s.src = "http://control.example/jsonp?callback=tvReply";
    document.body.appendChild(s);
})();
