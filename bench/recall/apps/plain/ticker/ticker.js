var Ticker = {
    x: 1280,
    speed: 4,
    text: "",
    node: null,
    timer: null,
    paused: false,

    start: function () {
        Ticker.node = document.getElementById("text");
        Feed.onupdate = Ticker.update;
        Feed.load();
        Ticker.timer = setInterval(Ticker.step, 40);
        setInterval(Feed.load, 300000);
        document.onkeydown = Ticker.key;
        document.getElementById("note").SetTimeout(5);
        document.getElementById("note").SetChannelBadge("news");   /* call: NOTIFICATION.SetChannelBadge */
    },

    update: function (items) {
        var note = document.getElementById("note"), titles = [];
        for (var i = 0; i < items.length; i++) {
            titles.push(items[i].title);
            if (items[i].category == "alert") {
                note.ShowMessage(items[i].title);
                note.FlashBorder("#f00", 3);          /* call: NOTIFICATION.FlashBorder */
                note.PlayChime("alert");              /* call: NOTIFICATION.PlayChime */
            }
        }
        Ticker.text = titles.join(" +++ ");
        Ticker.node.innerHTML = Ticker.escape(Ticker.text);
    },

    escape: function (s) {
        return s.replace(/&/g, "&amp;").replace(/</g, "&lt;");
    },

    step: function () {
        if (Ticker.paused) {
            return;
        }
        Ticker.x -= Ticker.speed;
        if (Ticker.x < -Ticker.node.offsetWidth) {
            Ticker.x = 1280;
        }
        Ticker.node.style.left = Ticker.x + "px";
    },

    key: function (e) {
        var code = e.which || e.keyCode;
        if (code == 13) {
            Ticker.paused = !Ticker.paused;
            if (Ticker.paused) {
                document.getElementById("scr").FreezePlane(1);      /* call: SCREEN.FreezePlane */
            } else {
                document.getElementById("scr").ReleasePlane(1);     /* call: SCREEN.ReleasePlane */
            }
        } else if (code == 38) {
            Ticker.speed++;
        } else if (code == 40 && Ticker.speed > 1) {
            Ticker.speed--;
        } else if (code == 403) {
            Printer.PrintScreen(Ticker.text);           /* decoy */
        } else if (code == 404) {
            Feed.url = Feed.url == "headlines.xml" ? "breaking.xml" : "headlines.xml";
            Feed.load();
        } else if (code == 406) {
            var w = document.getElementById("scr").GetWidth();
            var m = document.getElementById("scr").GetOverscan();   /* call: SCREEN.GetOverscan */
            Ticker.x = w - m;
        }
    }
};

// The test bench has no printer. Its stand-in keeps what it is given.
var Printer = {
    jobs: [],
    PrintScreen: function (text) {
        Printer.jobs.push(text);
    }
};
