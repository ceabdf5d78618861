TTX.namespace('TTX.input');

TTX.input.digits = (function () {
    var typed = '', node, done;

    function draw() {
        node.innerHTML = (typed + '---').substr(0, 3);
    }

    return {
        init: function (element, callback) {
            node = element;
            done = callback;
            draw();
        },
        type: function (digit) {
            if (typed === '' && (digit < 1 || digit > 8)) {
                return;
            }
            typed += digit;
            draw();
            if (typed.length === 3) {
                done(parseInt(typed, 10));
                typed = '';
            }
        },
        clear: function () {
            typed = '';
            draw();
        },
        HoldPage: function () {
            node.style.color = 'yellow';
        }
    };
}());

TTX.input.remote = (function () {
    var colours = { 403: 0, 404: 1, 405: 2, 406: 3 };

    return {
        init: function () {
            var remote = document.getElementById('ttxRemote'), k;
            remote.Open();
            for (k in colours) {
                if (colours.hasOwnProperty(k)) {
                    remote.RegisterKey(k);
                }
            }
            remote.GrabKeys('teletext');        /* call: REMOTE.GrabKeys */
            remote.SetLongPressTime(600);       /* call: REMOTE.SetLongPressTime */
        },
        colour: function (code) {
            return colours[code];
        }
    };
}());
