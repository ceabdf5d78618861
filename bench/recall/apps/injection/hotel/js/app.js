container.value("root", document.getElementById("view"));
container.value("window", window);

container.inject(function (root, router, window) {
    function draw() {
        var page = router.current();
        root.innerHTML = "<h1>" + page.title + "</h1><p>" + page.text() + "</p>";
    }

    window.addEventListener("keydown", function (e) {
        if (e.keyCode === 39) {
            router.move(1);
        } else if (e.keyCode === 37) {
            router.move(-1);
        } else if (e.keyCode === 13 || (e.keyCode >= 48 && e.keyCode <= 57)) {
            router.current().ok();
            router.move(1);
        } else {
            return;
        }
        draw();
    });

    draw();
});

// At night the set is left alone.
container.inject(function (clockPlugin, appsPlugin) {
    clockPlugin.OnMidnight(function () {                                /* call: CLOCK.OnMidnight */
        appsPlugin.SuspendAll();                                        /* call: APPLOADER.SuspendAll */
    });
});

container.run(["localePlugin"], function (l) {
    l.LockCountry(true);                                                /* call: LOCALE.LockCountry */
});
