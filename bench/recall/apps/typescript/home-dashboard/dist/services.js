"use strict";
var Home;
(function (Home) {
    /** Makes a getter of a property that looks the plug-in up once. */
    function Plugin(kind) {
        return function (target, key) {
            var node;
            Object.defineProperty(target, key, {
                get: function () {
                    if (!node) {
                        node = document.createElement("object");
                        node.setAttribute("classid", "clsid:MORVANE-NAVERTIX-" + kind);
                        document.body.appendChild(node);
                    }
                    return node;
                },
                enumerable: true,
                configurable: true
            });
        };
    }
    Home.Plugin = Plugin;
    /** Writes calls to the console. */
    function logged(target, key, descriptor) {
        var original = descriptor.value;
        descriptor.value = function () {
            var args = [];
            for (var _i = 0; _i < arguments.length; _i++) {
                args[_i] = arguments[_i];
            }
            console.log(key + "(" + args.join(", ") + ")");
            return original.apply(this, args);
        };
        return descriptor;
    }
    Home.logged = logged;
    var LightService = /** @class */ (function () {
        function LightService() {
            this.scene = "day";
        }
        LightService.prototype.setScene = function (scene) {
            this.scene = scene;
            this.sensor.SetThreshold(scene === "day" ? 40 : 5);
            this.sensor.SetScene(scene); /* call: LIGHTSENSOR.SetScene */
        };
        Object.defineProperty(LightService.prototype, "lux", {
            get: function () {
                return this.sensor.GetLuxHistory(60); /* call: LIGHTSENSOR.GetLuxHistory */
            },
            enumerable: false,
            configurable: true
        });
        __decorate([
            Plugin("LIGHTSENSOR")
        ], LightService.prototype, "sensor", void 0);
        __decorate([
            logged
        ], LightService.prototype, "setScene", null);
        return LightService;
    }());
    Home.LightService = LightService;
    var DoorService = /** @class */ (function () {
        function DoorService(onRing) {
            if (onRing === void 0) { onRing = function () { }; }
            var _this = this;
            this.port.Open();
            this.port.SetBaudRate(9600);
            this.port.OnFrame(function (frame) { _this.received(frame); onRing(frame); }); /* call: SERIALPORT.OnFrame */
        }
        DoorService.prototype.received = function (frame) {
            this.port.AckFrame(frame); /* call: SERIALPORT.AckFrame */
        };
        DoorService.prototype.unlock = function (door) {
            return __awaiter(this, void 0, void 0, function* () {
                this.port.WriteBytes([2, door, 3]);
                yield new Promise(function (resolve) { return setTimeout(resolve, 5); });
                this.port.DrainOutput(); /* call: SERIALPORT.DrainOutput */
                return true;
            });
        };
        __decorate([
            Plugin("SERIALPORT")
        ], DoorService.prototype, "port", void 0);
        __decorate([
            logged
        ], DoorService.prototype, "unlock", null);
        return DoorService;
    }());
    Home.DoorService = DoorService;
    var ClimateService = /** @class */ (function () {
        function ClimateService() {
            this.target = 21;
        }
        ClimateService.prototype.change = function (by) {
            var _a;
            this.target += by;
            (_a = this.radio) === null || _a === void 0 ? void 0 : _a.SendBeacon("climate", this.target); /* call: BLUETOOTH.SendBeacon */
        };
        __decorate([
            Plugin("BLUETOOTH")
        ], ClimateService.prototype, "radio", void 0);
        return ClimateService;
    }());
    Home.ClimateService = ClimateService;
})(Home || (Home = {}));
