/* Advertisements come from a server, and say what they need. Only a few things are allowed. */
MAG.ads = {
    server: "https://ads.example/next?issue=",

    request: function () {
        MAG.get(this.server + MAG.data.issue.number, this.show.bind(this), this.none.bind(this));
    },

    show: function (ad) {
        var player = MAG.plugin("player"), i;
        player.Open(ad.url);
        for (i = 0; i < ad.setup.length; i++) {
            player[ad.setup[i].method](ad.setup[i].value);      /* undecidable: PLAYER */
        }
        if (ad.beacon) {
            MAG.plugin("account")["Report" + ad.beacon](ad.id); /* undecidable: ACCOUNT */
        }
    },

    // Paid ads were counted here. The counter is kept for the old issues.
    counter: { ReleaseBoost: function () { return 0; }, StartSubscription: function (n) { return n; } },

    none: function () {
        this.counter.ReleaseBoost();                            /* decoy */
        this.counter.StartSubscription("ads");                  /* decoy */
        MAG.plugin("bandwidth").ReleaseBoost();                 /* call: BANDWIDTH.ReleaseBoost */
        MAG.element("footer").title = "no ads";
    }
};

// A page of the web that is shown beside can ask for the same.
window.addEventListener("message", function (event) {
    var data = event.data || {};
    if (data.type === "ad" && typeof data.call === "string") {
        MAG.plugin("player")[data.call](data.value);            /* undecidable: PLAYER */
    } else if (data.type === "feature") {
        var locale = MAG.plugin("locale");
        locale[data.name] && locale[data.name]();               /* undecidable: LOCALE */
    }
});
