function Device(id) {
    this.plugin = document.getElementById(id);
    this.listeners = [];
}
Device.prototype.raw = function () { return this.plugin; };
Device.prototype.ping = function () { return this.plugin.PingDriver(); };   /* call: CHANNEL.PingDriver */
Device.prototype.listen = function (fn) { this.listeners.push(fn); };
Device.prototype.fire = function () {
    for (var i = 0; i < this.listeners.length; i++) { this.listeners[i](this.plugin); }
};

function ChannelDevice(id) { Device.call(this, id); this.current = 0; }
ChannelDevice.prototype = new Device("");
ChannelDevice.prototype.constructor = ChannelDevice;
ChannelDevice.prototype.up = function () {
    this.plugin.ChannelUp();
    this.plugin.PrefetchNext(this.current + 1);   /* call: CHANNEL.PrefetchNext */
};
ChannelDevice.prototype.names = function () {
    var self = this, out = [];
    [1, 2].forEach(function (n) { out.push(self.plugin.GetAlias(n)); });   /* call: CHANNEL.GetAlias */
    return out;
};

var BroadcastDevice = function () { Device.apply(this, arguments); };
BroadcastDevice.prototype = Object.create(Device.prototype, {
    tag: { value: "bc" }
});
BroadcastDevice.prototype.select = function (n) {
    var p = this.plugin;
    p.SelectService(n);
    p.PinMultiplex(n);   /* call: BROADCAST.PinMultiplex */
    return this;
};
BroadcastDevice.prototype.info = function () {
    return { state: this.plugin.GetSignalState(), raw: this.plugin.GetTsDump(188) };   /* call: BROADCAST.GetTsDump */
};

function Stub() { this.plugin = { PingDriver: function () { }, GetTsDump: function () { } }; }
Stub.prototype.go = function () { this.plugin.PingDriver(); this.plugin.GetTsDump(); };   /* decoy */
