requirejs.config({
    baseUrl: 'scripts',
    paths: { radio: 'platform/radio', output: 'platform/output' },
    config: { 'platform/radio': { id: 'bt' } }
});

require(['devices', 'ui/list', 'radio', 'output', 'latency', 'domready!'], function (Devices, list, radio) {
    radio.SetVisibleName('Living room TV');                    /* call: BLUETOOTH.SetVisibleName */
    var devices = new Devices(radio);
    list.show(devices.all());

    document.addEventListener('keydown', function (e) {
        switch (e.keyCode) {
        case 38: list.move(-1); break;
        case 40: list.move(1); break;
        case 13: devices.use(list.current()); break;
        case 403: devices.search(); break;
        case 404:
            require(['latency'], function (latency) { latency.tune(radio, 120); });
            break;
        case 405: devices.forget(list.current()); break;
        case 406: list.ForgetAllDevices(); break;              /* decoy */
        }
    });
});
