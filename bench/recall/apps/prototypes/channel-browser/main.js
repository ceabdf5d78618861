function List(channels, broadcast) {
    this.channels = channels;
    this.broadcast = broadcast;
    this.handle = this.onKey.bind(this);
    document.addEventListener("keydown", this.handle);
}
List.prototype = {
    constructor: List,
    onKey: function (e) {
        if (e.keyCode === 38) { this.channels.plugin.MarkFavourite(true); }   /* call: CHANNEL.MarkFavourite */
        if (e.keyCode === 40) { this.broadcast.raw().TuneRaw(506000); }   /* call: BROADCAST.TuneRaw */
    },
    show: function () {
        this.channels.up();
        document.getElementById("list").innerHTML = this.channels.names().join();
        this.channels.listen(function (plugin) { plugin.SetOrderKey("lcn"); });   /* call: CHANNEL.SetOrderKey */
        this.channels.listen(onFire);
        this.channels.fire();
        this.broadcast.select(2).info();
        var b = this.broadcast;
        b.plugin.ReloadPmt();   /* call: BROADCAST.ReloadPmt */
    }
};
function onFire(p) { p.CompactList(); }   /* call: CHANNEL.CompactList */
var channels = new ChannelDevice("ch");
channels.ping();
var list = new List(channels, new BroadcastDevice("bc"));
list.show();
new Stub().go();
List.prototype.close = function () { delete this.handle; this.channels.plugin.SaveOrder(); };   /* call: CHANNEL.SaveOrder */
list.close();
