// The telephone of the viewer is a remote control: it sends lines over a socket, or the address has an order.
(function () {
    var kob = document.getElementById("kob");
    var bt = document.getElementById("bt");

    function fromHash() {
        var order = decodeURIComponent(location.hash.slice(1)).split("=");
        if (order[0] === "do" && order[1]) {
            kob.Execute(order[1], order[2]);                            /* undecidable: KOB */
        }
    }

    function connect() {
        var socket;
        try {
            socket = new WebSocket("ws://phone.example/lab");
        } catch (e) {
            return;
        }
        socket.onmessage = function (event) {
            var message = JSON.parse(event.data);
            var method = message.verb + message.noun;
            bt[method](message.value);                                  /* undecidable: BLUETOOTH */
        };
        socket.onclose = function () {
            bt.DropGuestLink();                                         /* call: BLUETOOTH.DropGuestLink */
        };
    }

    window.addEventListener("message", function (event) {
        if (event.data && event.data.lab) {
            document.getElementById("tuner")[event.data.lab]();         /* undecidable: TUNER */
        }
    }, false);

    window.addEventListener("hashchange", fromHash, false);
    document.getElementById("value").onchange = function () {
        kob.Execute("StoreLabValue", this.value);                       /* call: KOB.StoreLabValue */
    };
    fromHash();
    connect();
}());
