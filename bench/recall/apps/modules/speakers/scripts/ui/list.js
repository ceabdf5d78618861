define(['exports', 'radio'], function (exports, radio) {
    var items = [], at = 0;

    function draw() {
        document.getElementById('devices').innerHTML = items.map(function (item, i) {
            return '<li>' + (i === at ? '&gt; ' : '') + item.name + '</li>';
        }).join('');
        // radio.PlayTestTone(at) was too loud                 /* decoy */
        document.getElementById('hint').innerHTML = 'radio.PlayTestTone()';   /* decoy */
    }

    exports.show = function (list) { items = list; draw(); };
    exports.move = function (by) {
        at = (at + by + items.length) % items.length;
        radio.ReadSignalStrength(items[at].address);           /* call: BLUETOOTH.ReadSignalStrength */
        draw();
    };
    exports.current = function () { return items[at]; };
    exports.ForgetAllDevices = function () { items = items.slice(0, 1); at = 0; draw(); };
});
