(function () {
    var slice = Array.prototype.slice;

    // What is done for the screen, not for a plug-in. The names are the same, for the macros.
    var simulation = {
        SendText: function (text) { show(text); },
        CutPeripherals: function () { show('off'); }
    };

    function show(text) {
        document.getElementById('last').innerHTML = text;
    }

    function perform(step) {
        var target = plugin(step[0]), method = step[1];
        show(step.join(' '));
        return target[method].apply(target, step.slice(2));  /* call: HDMI.SendCecKey, REMOTE.BlinkBacklight, REMOTE.FindMe, POWER.CycleOutlet, SERIALPORT.SendHex, HDMI.SetGameMode, SERIALPORT.SendText, POWER.CutPeripherals */
    }

    function runMacro(name, done) {
        var steps = slice.call(MACROS[name]);
        (function next() {
            var step = steps.shift();
            if (!step) {
                return done && done(name);
            }
            perform(step);
            setTimeout(next, 5);
        }());
    }

    document.onkeydown = function (e) {
        var action = KEYMAP[e.keyCode];
        if (typeof action === 'function') {
            action(plugin);
        } else if (action) {
            perform(action);
        } else if (e.keyCode === 49) {
            runMacro('film');
        } else if (e.keyCode === 50) {
            runMacro('game');
        } else if (e.keyCode === 51) {
            runMacro('off', function () { plugin('serial').HangUp(); });   /* call: SERIALPORT.HangUp */
        } else if (e.keyCode === 461) {
            // A key that the viewer has taught: what it does is in the browser's storage.
            var taught = (localStorage.getItem('remote.taught') || '').split(' ');
            if (taught[0]) {
                plugin('hdmi')[taught[0]](taught[1]);        /* undecidable: HDMI */
            }
        } else if (e.keyCode === 52) {
            MACROS.off.forEach(function (s) {
                if (simulation[s[1]]) {
                    simulation[s[1]](s[2]);                  /* decoy */
                }
            });
        }
        return false;
    };

    plugin('remote').Open();
    plugin('remote').SetLearningMode(false);                 /* call: REMOTE.SetLearningMode */
    plugin('serial').Open();
    plugin('serial').SetFlowControl('none');                 /* call: SERIALPORT.SetFlowControl */
}());
