define("tv/plugins", [], function () {
    "use strict";
    return {
        epg: function () { return document.getElementById("objEpg"); },
        channel: function () { return document.getElementById("objCh"); },
        storage: function () { return document.getElementById("objSt"); }
    };
});

define("guide/settings", { days: 3, language: "en", genres: ["film", "sports", "children"] });

define("guide/model", ["tv/plugins", "./settings"], function (plugins, settings) {
    "use strict";
    var epg;

    function open() {
        epg = plugins.epg();
        epg.Open();
        epg.SetLanguage(settings.language);
        epg.SetDaysAhead(settings.days);                        /* call: EPG.SetDaysAhead */
    }

    function now(channel) {
        return { channel: channel, now: epg.GetPresentEvent(channel), next: epg.GetFollowingEvent(channel) };
    }

    function byGenre(name) {
        return epg.FilterByGenre(name);                         /* call: EPG.FilterByGenre */
    }

    return { open: open, now: now, byGenre: byGenre, raw: function () { return epg; } };
});

define("guide/favourites", ["exports", "tv/plugins"], function (exports, tv) {
    "use strict";
    var storage = tv.storage();

    exports.all = [1, 2, 3];

    exports.toggle = function (channel) {
        var i = exports.all.indexOf(channel);
        if (i < 0) { exports.all.push(channel); } else { exports.all.splice(i, 1); }
        storage.SetItem("favourites", exports.all.join());
        storage.SetItemExpiry("favourites", 0);                 /* call: STORAGE.SetItemExpiry */
        tv.channel().SetFavorite(channel, i < 0);               /* call: CHANNEL.SetFavorite */
    };

    exports.SetDaysAhead = function (n) { exports.days = n; };
});

define("guide/view", function () {
    "use strict";
    function View(node) {
        this.node = node;
    }
    View.prototype.draw = function (rows) {
        this.node.innerHTML = rows.map(function (r) {
            return "<li data-channel='" + r.channel + "'>" + r.channel + ": " + r.now + " / " + r.next + "</li>";
        }).join("");
    };
    View.prototype.FilterByGenre = function (name) {
        this.node.className = name;
    };
    return View;
});

define("guide/main", ["./model", "./view", "./favourites", "./settings", "tv/plugins"], function (model, View, favourites, settings, tv) {
    "use strict";
    var view, genre = 0;

    function refresh() {
        view.draw(favourites.all.map(model.now));
        model.raw().AckUpdate();                                /* call: EPG.AckUpdate */
    }

    function key(e) {
        switch (e.keyCode) {
        case 403:
            genre = (genre + 1) % settings.genres.length;
            model.byGenre(settings.genres[genre]);
            view.FilterByGenre(settings.genres[genre]);         /* decoy */
            break;
        case 404:
            favourites.toggle(5);
            favourites.SetDaysAhead(2);                         /* decoy */
            break;
        case 405:
            tv.epg().ClearFilters();                            /* call: EPG.ClearFilters */
            break;
        case 406:
            var ch = tv.channel();
            ch.ShowMosaic(favourites.all.slice(0, 9));          /* call: CHANNEL.ShowMosaic */
            break;
        default:
            return;
        }
        refresh();
    }

    return {
        start: function (node) {
            view = new View(node);
            model.open();
            refresh();
            document.addEventListener("keydown", key);
            node.onclick = function (e) {
                var n = e.target.getAttribute("data-channel");
                if (n) {
                    tv.channel().SetChannel(+n);
                    tv.channel().RememberChannel(+n);           /* call: CHANNEL.RememberChannel */
                }
            };
        }
    };
});
