(function () {
    var stage = document.getElementById('stage'), footer = document.getElementById('footer');
    var screens = [new Portal.AppsScreen(), new Portal.SearchScreen(), new Portal.ShopScreen()];
    var inputs = [new Portal.Inputs(Portal.store.device('hdmi')), new Portal.Virtual()];
    var current = null;

    function go(n) {
        if (current) { current.Unmount(); }                     /* decoy */
        current = screens[n];
        current.Mount(stage);                                   /* decoy */
        rest.Wind();                                            /* decoy */
    }
    var rest = new Portal.Timer(90000, function () { go(0); });

    Portal.store.watch(function (record) {
        footer.textContent = record.Touch().key;                /* decoy */
    });
    Portal.store.Put('viewer', { name: 'Ann' }).Merge({ age: 40 });     /* decoy */
    Portal.store.device('downloader').Merge('parts');           /* call: DOWNLOADER.Merge */

    // Attendants are told of the end. Some have a method for it, and those are all of the portal.
    var attendants = [rest, screens[1].drawn, { Farewell: function () { footer.textContent = 'Bye'; } }];
    function farewell() {
        attendants.forEach(function (one) {
            if (typeof one.Farewell === 'function') {
                one.Farewell();                                 /* decoy */
            } else if (one instanceof Portal.Timer) {
                one.Halt();                                     /* decoy */
            }
        });
        Portal.store.device('hdmi').Farewell();                 /* call: HDMI.Farewell */
    }

    var global = {
        403: function () { go(0); },
        404: function () { go(1); },
        405: function () { go(2); },
        406: function () { inputs.forEach(function (one) { one.Activate(1); footer.title = one.Probe(); }); },      /* decoy */
        19: function () { Portal.Texts.Switch(Portal.Texts.language === 'en' ? 'de' : 'en'); },                     /* decoy */
        27: farewell,
        461: function () {
            Portal.store.purge();
            Portal.store.device('downloader').Purge(7);         /* call: DOWNLOADER.Purge */
        }
    };
    document.addEventListener('keydown', function (e) {
        if (!current.Key(e.keyCode) && global[e.keyCode]) {     /* decoy */
            global[e.keyCode]();
        }
    }, false);

    // The stage is shown with each screen once, so that the pictures are there when they are needed.
    [1, 2, 0].forEach(go);
    footer.onclick = function () {
        go(1);
        [49, 13, 13, 415].forEach(function (code) { current.Key(code); });      /* decoy */
        go(2);
        [38, 40, 8, 38, 13].forEach(function (code) { current.Key(code); });    /* decoy */
        go(0);
    };
}());
