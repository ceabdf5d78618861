TTX.main = (function () {
    var teletext = TTX.device.teletext,
        digits = TTX.input.digits,
        current = 100;

    function key(e) {
        var code = e.keyCode, colour = TTX.input.remote.colour(code);
        if (code >= 48 && code <= 57) {
            digits.type(code - 48);
        } else if (colour !== undefined) {
            teletext.go(parseInt(teletext.links()[colour], 10));
        } else if (code === 38 || code === 40) {
            teletext.step(code === 38 ? 1 : -1);
        } else if (code === 13) {
            TTX.bookmarks.toggle(current);
        } else if (code === 37) {
            teletext.reveal();
        } else if (code === 39) {
            if (teletext.hold()) {
                digits.HoldPage();              /* decoy */
            }
        } else if (code === 33) {
            teletext.zoom(1);
        } else if (code === 34) {
            teletext.mix(50);
        } else if (code === 8) {
            digits.clear();
        }
    }

    return {
        boot: function () {
            TTX.input.remote.init();
            digits.init(document.getElementById('digits'), teletext.go);
            teletext.onChange(function (page) {
                current = page;
            });
            teletext.open();
            TTX.bookmarks.load();
            document.onkeydown = key;
            // plugin.SetNationalSubset("fr") for the French release     /* decoy */
        }
    };
}());
