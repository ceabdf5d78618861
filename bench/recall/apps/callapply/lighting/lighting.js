(function () {
    var find = fn.memoize(function (id) { return document.getElementById(id); });
    var sensor = find('sensor'), port = find('port'), radio = find('radio');
    var lamps = [{ name: 'Sofa', level: 0 }, { name: 'Desk', level: 50 }, { name: 'TV', level: 20 }];
    var selected = 0;

    // Functions of plug-ins that are passed on.
    var sendScene = port.SendDmxScene.bind(port, 1);                /* call: SERIALPORT.SendDmxScene */
    var setUniverse = fn.curry(function (universe, channel, value) {
        port.SetDmxChannel(universe * 512 + channel, value);        /* call: SERIALPORT.SetDmxChannel */
    }, 0);
    var openOnce = fn.once(function () {
        port.Open();
        port.SetBaudRate(250000);
        port.EnterDmxMode.call(port);                               /* call: SERIALPORT.EnterDmxMode */
    });

    function draw() {
        find('lamps').innerHTML = lamps.map(function (l, i) {
            return (i === selected ? '<b>' : '') + l.name + ' ' + l.level + (i === selected ? '</b>' : '');
        }).join('<br>');
    }

    function level(by) {
        var lamp = lamps[selected];
        lamp.level = Math.max(0, Math.min(100, lamp.level + by));
        openOnce();
        setUniverse(selected, lamp.level);
        draw();
    }

    function scene(levels) {
        lamps.forEach(function (l, i) { l.level = levels[i]; });
        openOnce();
        sendScene(levels.join());                                   /* also: SERIALPORT.SendDmxScene */
        var blackout = port['HoldDmx'];
        blackout.apply(port, [levels.every(function (l) { return l === 0; })]);   /* call: SERIALPORT.HoldDmx */
        draw();
    }

    // The room's light follows the picture.
    var follow = fn.debounce(function () {
        sensor.SetFollowMode.apply(sensor, arguments);              /* call: LIGHTSENSOR.SetFollowMode */
    }, 5);

    function pair() {
        fn.invoke(radio, 'SetMeshKey', '0000');                     /* also: BLUETOOTH.SetMeshKey */
        fn.invoke(radio, 'JoinMesh');                               /* also: BLUETOOTH.JoinMesh */
        ['PairLamp', 'NameLamp'].map(function (m) { return radio[m]; }).forEach(function (f, i) {
            f.call(radio, lamps[i].name);                           /* call: BLUETOOTH.PairLamp, BLUETOOTH.NameLamp */
        });
    }

    var describe = fn.compose(
        function (text) { document.title = text; return text; },
        function (p) { return String(p.GetFluxLimit(1)); },         /* call: LIGHTSENSOR.GetFluxLimit */
        find
    );

    var actions = {
        37: fn.curry(level, -10),
        39: fn.curry(level, 10),
        403: fn.curry(scene, [0, 0, 0]),
        404: fn.curry(scene, [80, 80, 80]),
        405: fn.curry(follow, 'picture', 3),
        406: pair,
        13: fn.curry(describe, 'sensor')
    };

    document.onkeydown = function (e) {
        if (e.keyCode === 38 || e.keyCode === 40) {
            selected = (selected + e.keyCode - 39 + lamps.length) % lamps.length;
            draw();
        }
        var action = actions[e.keyCode];
        return action ? action.call(null) : undefined;
    };

    // Borrowed: runs a function of the same name on a list.
    var list = { SendDmxScene: function () { return lamps.length; }, HoldDmx: function () { return 0; } };
    list.SendDmxScene.call(lamps);                                  /* decoy */
    fn.invoke(list, 'HoldDmx');                                     /* decoy */

    setTimeout(sensor.StartSampling.bind(sensor, 100), 5);          /* call: LIGHTSENSOR.StartSampling */
    Reflect.apply(sensor.SetSampleWindow, sensor, [1000]);          /* call: LIGHTSENSOR.SetSampleWindow */
    draw();
}());
