var Banner = MVC.View.extend({
    initialize: function () {
        this.model.on("change:service", this.Announce, this);
    },
    Announce: function (service) {
        this.el.textContent = String(service);
        this.Slide("up");                                       /* decoy */
        var self = this;
        clearTimeout(this.timer);
        this.timer = setTimeout(function () { self.Slide("down"); }, 2000);     /* decoy */
    },
    Slide: function (direction) { this.el.className = direction; }
});

// Subtitles: the view has the plug-in for its element, so "el" is one here.
var SubtitleView = MVC.View.extend({
    Announce: function (on) {
        this.el.SetTrack(on ? 1 : 0);
        this.el.SetEdgeStyle("raised");                         /* call: SUBTITLE.SetEdgeStyle */
    },
    Slide: function (direction) {
        this.el.ShiftLines(direction === "up" ? -2 : 2);        /* call: SUBTITLE.ShiftLines */
    }
});

var ListView = MVC.View.extend({
    cursor: 0,
    Paint: function () {
        this.el.innerHTML = this.services.map(function (one, n) {
            return n === this.cursor ? "<b>" + one + "</b>" : String(one);
        }, this).join("<br>");
    },
    Move: function (by) {
        this.cursor = (this.cursor + by + this.services.length) % this.services.length;
        this.Paint();                                           /* decoy */
    },
    Current: function () { return this.services[this.cursor]; }
});

// Entries of the menu: "do" is a method of the receiver, the service or the extension, by the letter before it.
var MENU = ["r:Standby", "s:Lock", "s:Promote", "x:PurgeCache", "x:SetDebugOverlay"];      /* also: KOB.PurgeCache, KOB.SetDebugOverlay */
var MenuView = MVC.View.extend({
    choose: function (n) {
        var parts = MENU[n].split(":");
        if (parts[0] === "x") {
            this.extension.Execute(parts[1], 1);                /* call: KOB.PurgeCache, KOB.SetDebugOverlay */
        } else if (parts[0] === "s") {
            this.list.Current()[parts[1]]();                    /* decoy */
        } else {
            this.receiver[parts[1]]();
        }
        this.el.textContent = MENU[n];
    }
});
