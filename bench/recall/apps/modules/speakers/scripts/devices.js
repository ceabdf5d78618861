define(['output', 'latency'], function (output, latency) {
    function Devices(radio) {
        this.radio = radio;
        this.known = [
            { name: 'Kitchen', address: '00:11' }, { name: 'Headphones', address: '00:12' }, { name: 'Bath', address: '00:13' }
        ];
    }

    Devices.prototype.all = function () { return this.known; };

    Devices.prototype.search = function () {
        this.radio.StartDiscovery();
        this.radio.FilterByService('audio-sink');              /* call: BLUETOOTH.FilterByService */
    };

    Devices.prototype.use = function (device) {
        if (this.radio.Connect(device.address)) {
            output.route(device.address);
            latency.tune(this.radio, 80);
            output.plugin.CrossFade(300);                      /* call: AUDIO.CrossFade */
        }
    };

    Devices.prototype.forget = function (device) {
        this.radio.UnpairDevice(device.address);
        this.radio.ForgetAllDevices();                         /* call: BLUETOOTH.ForgetAllDevices */
        output.back();
    };
    return Devices;
});
