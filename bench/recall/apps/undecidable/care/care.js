/* Remote care: the call centre sees the state of the set and changes settings. */
(function () {
    var SERVER = "https://care.example/session/";
    var display = document.getElementById("careDisplay");
    var net = document.getElementById("careNet");
    var kob = document.getElementById("careKob");
    var session = Math.floor(Math.random() * 1e6);
    var timer = null, failures = 0;

    function say(text) {
        document.getElementById("state").innerHTML = text;
    }

    function request(path, body, callback) {
        var xhr = new XMLHttpRequest();
        xhr.open(body ? "POST" : "GET", SERVER + session + path, true);
        xhr.onload = function () {
            failures = 0;
            callback(xhr.responseText);
        };
        xhr.onerror = function () {
            failures++;
            if (failures === 1) {
                net.LogCareFailure(xhr.status);                 /* call: NETWORK.LogCareFailure */
            }
            if (failures > 3) {
                stop();
            }
        };
        xhr.send(body || null);
    }

    // What the call centre can ask for.
    var handlers = {
        get: function (order) {
            return display["Get" + order.name]();               /* undecidable: DISPLAY */
        },
        set: function (order) {
            return display["Set" + order.name](order.value);    /* undecidable: DISPLAY */
        },
        network: function (order) {
            return net[order.method].apply(net, order.args || []);      /* undecidable: NETWORK */
        },
        extension: function (order) {
            return kob.Execute(order.method, order.value);      /* undecidable: KOB */
        },
        picture: function () {
            display.SendScreenshot(SERVER + session);           /* call: DISPLAY.SendScreenshot */
            return "sent";
        }
    };

    function perform(text) {
        var orders;
        try {
            orders = JSON.parse(text);
        } catch (e) {
            say("Not understood");
            return;
        }
        var replies = orders.map(function (order) {
            return handlers[order.kind] ? handlers[order.kind](order) : null;
        });
        request("/replies", JSON.stringify(replies), function () {
            say(replies.length + " orders are done");
        });
    }

    function poll() {
        request("/orders", null, perform);
    }

    function start() {
        document.getElementById("number").innerHTML = session;
        kob.Execute("OpenCareChannel", session);                /* call: KOB.OpenCareChannel */
        net.OpenPort(8042);                                     /* call: NETWORK.OpenPort */
        timer = setInterval(poll, 5000);
        poll();
    }

    function stop() {
        clearInterval(timer);
        net.ClosePort(8042);                                    /* call: NETWORK.ClosePort */
        kob.Execute("CloseCareChannel", session);               /* call: KOB.CloseCareChannel */
    }

    // A newer call centre uses a socket.
    function connect() {
        var socket;
        try {
            socket = new WebSocket("wss://care.example/socket");
        } catch (e) {
            return;
        }
        socket.onmessage = function (event) {
            var parts = event.data.split(" ");
            var target = parts[0] === "display" ? display : null;
            if (target) {
                socket.send(target[parts[1]](parts[2]));        /* undecidable: DISPLAY */
            } else {
                log[parts[1]](parts[2]);                        /* decoy */
            }
        };
        socket.onclose = function () {
            display.ShowCareHint("closed");                     /* call: DISPLAY.ShowCareHint */
        };
    }

    var log = {
        lines: [],
        OpenPort: function (n) { this.lines.push("open " + n); },
        ClosePort: function (n) { this.lines.push("close " + n); }
    };

    document.onkeydown = function (e) {
        if (e.keyCode === 403) {
            handlers.picture();
        } else if (e.keyCode === 404) {
            connect();
        } else if (e.keyCode === 405) {
            log.OpenPort(1);                                    /* decoy */
            log.ClosePort(1);                                   /* decoy */
        } else if (e.keyCode === 27) {
            stop();
        }
    };

    start();
}());
