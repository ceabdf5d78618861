"use strict";
var __extends = (this && this.__extends) || (function () {
    var set = Object.setPrototypeOf || function (d, b) { for (var p in b) d[p] = b[p]; };
    return function (d, b) {
        set(d, b);
        function __() { this.constructor = d; }
        d.prototype = (__.prototype = b.prototype, new __());
    };
})();
var __decorate = function (decorators, target, key, desc) {
    for (var i = decorators.length - 1; i >= 0; i--) desc = decorators[i](target, key, desc) || desc;
    Object.defineProperty(target, key, desc);
};
var Mode;
(function (Mode) { Mode[Mode["Fast"] = 0] = "Fast"; Mode[Mode["Safe"] = 1] = "Safe"; })(Mode || (Mode = {}));
var Devices;
(function (Devices) {
    function storage() { return document.getElementById("sto"); }
    Devices.storage = storage;
    var Base = /** @class */ (function () {
        function Base(plugin) {
            if (plugin === void 0) { plugin = storage(); }
            var _this = this;
            this.plugin = plugin;
            this.later = function () { return _this.plugin.SyncDeferred(Mode.Fast); };   /* call: STORAGE.SyncDeferred */
            this.plugin.SetWriteMode(Mode.Safe);   /* call: STORAGE.SetWriteMode */
        }
        Object.defineProperty(Base.prototype, "raw", { get: function () { return this.plugin; }, enumerable: false, configurable: true });
        Base.prototype.close = function () { this.plugin.CloseHandles(); };   /* call: STORAGE.CloseHandles */
        return Base;
    }());
    Devices.Base = Base;
})(Devices || (Devices = {}));
var logged = function (target, key, desc) {
    var old = desc.value;
    return { value: function () { this.plugin.LogCall(key); return old.apply(this, arguments); } };   /* call: STORAGE.LogCall */
};
var Storage2 = /** @class */ (function (_super) {
    __extends(Storage2, _super);
    function Storage2() {
        var _this = _super !== null && _super.apply(this, arguments) || this;
        _this.names = ["SetShard", "GetShard"];
        return _this;
    }
    Storage2.prototype.put = function (k) {
        var rest = [];
        for (var _i = 1; _i < arguments.length; _i++) { rest[_i - 1] = arguments[_i]; }
        this.plugin.SetItem(k);
        (_a = this.plugin).PutMany.apply(_a, rest);   /* call: STORAGE.PutMany */
        var _a;
    };
    Storage2.prototype.all = function () {
        for (var _i = 0, _a = this.names; _i < _a.length; _i++) { this.plugin[_a[_i]](); }   /* call: STORAGE.SetShard, STORAGE.GetShard */
    };
    Storage2.prototype.close = function () { _super.prototype.close.call(this); this.raw.ZeroFree(); };   /* call: STORAGE.ZeroFree */
    __decorate([logged], Storage2.prototype, "put", Object.getOwnPropertyDescriptor(Storage2.prototype, "put"));
    return Storage2;
}(Devices.Base));
var s = new Storage2();
s.put("a", 1, 2);
s.all();
s.close();
setTimeout(s.later, 1);
(_b = s === null || s === void 0 ? void 0 : s.raw) === null || _b === void 0 ? void 0 : _b.StatFs();   /* call: STORAGE.StatFs */
var _b, _c = Devices.storage(), first = _c, _d = { sto: Devices.storage() }, sto = _d.sto;
sto.WalCheckpoint();   /* call: STORAGE.WalCheckpoint */
first.VacuumAll();   /* call: STORAGE.VacuumAll */
var fake = { plugin: { PutMany: function () { }, StatFs: function () { } } };
Storage2.prototype.put.call({ plugin: { LogCall: function () { }, SetItem: function () { }, PutMany: function () { } } }, "x");
fake.plugin.StatFs();   /* decoy */
