// Where the application runs: on a television there are plug-ins, in a browser there is nothing.
var Platform = (function () {
    function make(kind) {
        var holder = document.createElement("div");
        holder.innerHTML = '<object classid="clsid:MORVANE-NAVERTIX-' + kind + '"></object>';
        document.getElementById("plugins").appendChild(holder);
        return holder.firstChild;
    }

    function Television() {
        this.locale = make("LOCALE");
        this.clock = make("CLOCK");
        this.screen = make("SCREEN");
    }
    Television.prototype = {
        place: function () {
            return this.locale.GetPostalCode() || null;        /* call: LOCALE.GetPostalCode */
        },
        language: function () {
            return String(this.locale.GetLanguage()).slice(0, 2);
        },
        night: function (on) {
            this.screen.SetNightTint(on ? 0.3 : 0);            /* call: SCREEN.SetNightTint */
        },
        sun: function () {
            return this.clock.GetSunTimes(this.place());       /* call: CLOCK.GetSunTimes */
        },
        snapshot: function (area) {
            return this.screen.CaptureRegion(area.x, area.y, area.w, area.h);   /* call: SCREEN.CaptureRegion */
        }
    };

    function Browser() {}
    Browser.prototype = {
        place: function () { return "10115"; },
        language: function () { return (navigator.language || "en").slice(0, 2); },
        night: function () {},
        sun: function () { return null; },
        snapshot: function () { return null; },
        SetNightTint: function () {}
    };

    return {
        detect: function () {
            var desktop = /desktop=1/.test(location.search);
            if (desktop) {
                var browser = new Browser();
                browser.SetNightTint();                        /* decoy */
                return browser;
            }
            return new Television();
        }
    };
}());
