(function () {
    function click(event) {
        var d = event.target.dataset || {};
        if (d.section) {
            MAG.router.open("section", { id: d.section });
        } else if (d.article) {
            MAG.router.open("article", { id: +d.article });
        } else if (d.video) {
            MAG.player.play(MAG.data.article(+d.video));
        }
    }

    function key(event) {
        var code = event.keyCode, scene = MAG.router.current();
        if (!scene || scene.key(code)) {
            return;
        }
        switch (code) {
        case 37: MAG.focus.move(-1, 0); break;
        case 38: MAG.focus.move(0, -1); break;
        case 39: MAG.focus.move(1, 0); break;
        case 40: MAG.focus.move(0, 1); break;
        case 13: MAG.focus.press(); break;
        case 8:
        case 27: MAG.router.back(); break;
        case 403: MAG.ads.request(); break;
        case 404: MAG.i18n.use("de"); scene.show(); break;
        case 405: MAG.router.open("article", { id: 4 }); MAG.player.play(MAG.data.article(4)); break;
        case 406: subscribe(); break;
        }
    }

    function subscribe() {
        var account = MAG.plugin("account");
        if (!account.IsSignedIn()) {
            account.SignIn();
        }
        account.StartSubscription("magazine");                  /* call: ACCOUNT.StartSubscription */
        account.SetPaperless(true);                             /* call: ACCOUNT.SetPaperless */
    }

    window.addEventListener("load", function () {
        document.addEventListener("click", click);
        document.addEventListener("keydown", key);
        MAG.i18n.init();
        MAG.player.on("time", function (text) {
            MAG.element("clockText").innerHTML = text;
        });
        MAG.data.on("loaded", function () {
            MAG.router.open("sections");
        });
        MAG.focus.on("moved", function (element) {
            element.setAttribute("aria-selected", "true");
        });
        MAG.data.load();
    });
}());
