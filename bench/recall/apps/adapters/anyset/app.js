(function () {
    var set = Adapters.best();
    var others = [Adapters.named('html5'), Adapters.named('solara')];
    var films = ['a.mp4', 'b.mp4'], at = 0;

    function each(fn) {
        fn(set);
        others.forEach(fn);
    }

    function start() {
        each(function (one) { one.open(films[at]); });
        set.play();
        each(function (one) { one.sound('film'); });
        set.picture(960, 540);
    }

    // Figures of the provider: how well does each of them play?
    var Quality = {
        samples: {},
        Record: function (vendor, info) { (this.samples[vendor] = this.samples[vendor] || []).push(info); },
        Publish: function () { this.samples = {}; }
    };
    function watch() {
        each(function (one) { Quality.Record(one.vendor, one.info()); });       /* decoy */
    }

    if (set.vendor === 'navertix') {
        document.getElementById('nvPlayer').SetVendorMode(1);   /* call: PLAYER.SetVendorMode */
    }

    document.onkeydown = function (e) {
        switch (e.keyCode) {
        case 13: start(); break;
        case 39: at = (at + 1) % films.length; start(); break;
        case 412: each(function (one) { one.rate(2); }); break;
        case 417: each(function (one) { one.rate(8); }); break;
        case 403: watch(); break;
        case 404:
            Quality.Publish();                                  /* decoy */
            document.getElementById('nvAudio').Publish('spdif');    /* call: AUDIO.Publish */
            break;
        case 405:
            solara.Media.SetUrl('');                            /* decoy */
            solara.Screen.SetVideoWindow(0, 0, 1, 1);           /* decoy */
            others[1].play();
            others[1].picture(320, 180);
            others[0].play();
            document.getElementById('nvDisplay').SetOverscan(5);    /* call: DISPLAY.SetOverscan */
            break;
        case 27: each(function (one) { one.close(); }); break;
        }
    };
}());
