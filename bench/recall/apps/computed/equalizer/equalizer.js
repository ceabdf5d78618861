var Equalizer = (function () {
    var BANDS = ['60', '250', '1k', '4k', '12k'];
    var PRESETS = {
        flat: [0, 0, 0, 0, 0],
        rock: [4, 2, -1, 2, 4],
        voice: [-3, 0, 4, 3, 0]
    };
    var CHANNELS = ['Left', 'Right'];
    var GET = 'Get', SET = 'Set';

    var audio = document.getElementById('eqAudio');
    var storage = document.getElementById('eqStorage');
    var levels = PRESETS.flat.slice();
    var band = 0;

    function accessor(verb, noun) {
        return verb + noun;
    }

    function capital(word) {
        return word.charAt(0).toUpperCase() + word.slice(1);
    }

    function applyBands() {
        for (var i = 0; i < BANDS.length; i++) {
            audio['SetBand' + (i + 1)](levels[i]);                          /* call: AUDIO.SetBand1, AUDIO.SetBand2, AUDIO.SetBand3, AUDIO.SetBand4, AUDIO.SetBand5 */
        }
        audio[accessor(SET, 'BandQ')](1.4);                                 /* call: AUDIO.SetBandQ */
    }

    function applyGain(db) {
        CHANNELS.forEach(function (side) {
            audio[SET + side + 'Gain'](db);                                 /* call: AUDIO.SetLeftGain, AUDIO.SetRightGain */
        });
    }

    function preset(name) {
        levels = PRESETS[name].slice();
        applyBands();
        audio['Apply' + capital(name) + 'Preset']();                        /* call: AUDIO.ApplyFlatPreset, AUDIO.ApplyRockPreset, AUDIO.ApplyVoicePreset */
    }

    function toggle(what, on) {
        audio[(on ? 'Enable' : 'Disable') + what]();                        /* call: AUDIO.EnableLimiter, AUDIO.DisableLimiter */
    }

    function remember() {
        var method = ['Set', 'Item', 'Encrypted'].join('');
        storage.SetItem('eq.levels', levels.join());
        storage[method]('eq.last', band);                                   /* call: STORAGE.SetItemEncrypted */
    }

    function peaks() {
        var meters = {};
        for (var i in CHANNELS) {
            meters[CHANNELS[i]] = audio[`${GET}${CHANNELS[i]}Peak`]();      /* call: AUDIO.GetLeftPeak, AUDIO.GetRightPeak */
        }
        return meters;
    }

    function draw() {
        var p = peaks();
        document.getElementById('bars').innerHTML = BANDS.map(function (name, i) {
            return '<span' + (i === band ? ' class="on"' : '') + '>' + name + ': ' + levels[i] + '</span>';
        }).join(' ') + ' ' + p.Left + '/' + p.Right;
        document.getElementById('presets').innerHTML = Object.keys(PRESETS).map(function (name) {
            return '<button data-preset="' + name + '">' + capital(name) + '</button>';
        }).join('');
    }

    document.getElementById('presets').onclick = function (e) {
        var name = e.target.getAttribute('data-preset');
        if (name) {
            preset(name);
        }
    };

    var names = Object.keys(PRESETS), next = 0, limiter = false;

    document.onkeydown = function (e) {
        switch (e.keyCode) {
        case 37: band = (band + 4) % 5; break;
        case 39: band = (band + 1) % 5; break;
        case 38: levels[band]++; applyBands(); break;
        case 40: levels[band]--; applyBands(); break;
        case 13: remember(); break;
        case 403: preset(names[next++ % names.length]); break;
        case 49: preset('rock'); break;
        case 50: preset('voice'); break;
        case 404: toggle('Limiter', (limiter = !limiter)); break;
        case 405: applyGain(limiter ? 0 : -3); break;
        case 406: graph['Set' + 'BandQ'](1); break;                         /* decoy */
        default: return;
        }
        draw();
    };

    // Draws the curve. It has the setters of the plug-in, so that either can be set.
    var graph = {
        points: [],
        SetBandQ: function (q) { this.q = q; },
        SetBand1: function (v) { this.points[0] = v; }
    };
    graph['SetBand' + 1](levels[0]);                                        /* decoy */

    preset('flat');
    draw();
    return { preset: preset };
}());
