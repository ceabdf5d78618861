var Registry = (function () {
    var slots = {};
    return {
        define: function (name, id) {
            Object.defineProperty(this, name, {
                configurable: true,
                get: function () {
                    if (!slots[name]) slots[name] = document.getElementById(id);
                    return slots[name];
                }
            });
            return this;
        }
    };
})();
Registry.define("remote", "rmt").define("channel", "ch");
Registry.remote.SetRepeatDelay(300);   /* call: REMOTE.SetRepeatDelay */
Registry.channel.HideNumber(7);   /* call: CHANNEL.HideNumber */
with (Registry) { remote.GrabAllKeys(); }   /* call: REMOTE.GrabAllKeys */

function Wrapper(el) {
    this.unwrap = function () { return el; };
    this.send = function (name, arg) { return el[name](arg); };   /* call: CHANNEL.SetPreset, CHANNEL.SwapNumbers */
}
var w = new Wrapper(Registry.channel);
w.unwrap().ExportList("xml");   /* call: CHANNEL.ExportList */
w.send("SetPreset", 1);   /* also: CHANNEL.SetPreset */
w.send("SwapNumbers", 2);   /* also: CHANNEL.SwapNumbers */
w.send("ChannelUp");

// A wrapper with a method for each name.
var api = {};
["FlashLed", "SetHoldTime"].forEach(function (m) { api[m] = function () { return Registry.remote[m].apply(Registry.remote, arguments); }; });   /* call: REMOTE.FlashLed, REMOTE.SetHoldTime */
api.FlashLed(2);   /* also: REMOTE.FlashLed */
api.SetHoldTime(700);   /* also: REMOTE.SetHoldTime */

var proxy = Proxy.revocable(Registry, { get: function (t, k, r) { return Reflect.get(t, k); } }).proxy;
proxy.remote.ResetCounters();   /* call: REMOTE.ResetCounters */
var guard = new Proxy(function () { }, { apply: function (_, self, args) { return document.getElementById(args[0]); } });
guard("ch").InsertGap(3);   /* call: CHANNEL.InsertGap */
var deep = new Proxy({}, { get: function (t, k) { return k === "plugin" ? Registry.channel : deep; } });
deep.some.where.plugin.MoveBlock(1, 2);   /* call: CHANNEL.MoveBlock */
var desc = Object.getOwnPropertyDescriptor(Registry, "remote");
desc.get.call(null).GetMacroList();   /* call: REMOTE.GetMacroList */
Reflect.get(Registry, "channel").Renumber(10);   /* call: CHANNEL.Renumber */
var boxed = { valueOf: function () { return 1; }, current: null, set device(v) { this.current = v; } };
boxed.device = Registry.remote;
boxed.current.PlayMacro(1);   /* call: REMOTE.PlayMacro */
class Lazy { static get plugin() { Object.defineProperty(this, "plugin", { value: document.getElementById("ch") }); return this.plugin; } }
Lazy.plugin.SortByName();   /* call: CHANNEL.SortByName */
Lazy.plugin.GetHash();   /* call: CHANNEL.GetHash */
var counted = { get plugin() { return { MoveBlock: function () { }, GetHash: function () { } }; } };
counted.plugin.MoveBlock();   /* decoy */
with (counted.plugin) { GetHash(); }   /* decoy */
