"use strict";
var __extends = (this && this.__extends) || (function () {
    var extendStatics = function (d, b) {
        extendStatics = Object.setPrototypeOf || function (d, b) { for (var p in b) if (b.hasOwnProperty(p)) d[p] = b[p]; };
        return extendStatics(d, b);
    };
    return function (d, b) {
        extendStatics(d, b);
        function __() { this.constructor = d; }
        d.prototype = b === null ? Object.create(b) : (__.prototype = b.prototype, new __());
    };
})();
var Home;
(function (Home) {
    var Tile = /** @class */ (function () {
        function Tile(title) {
            this.title = title;
            this.node = document.createElement("div");
            this.node.onclick = this.activate.bind(this);
        }
        Tile.prototype.activate = function () { };
        Tile.prototype.text = function () { return ""; };
        Tile.prototype.draw = function () {
            this.node.textContent = this.title + " " + this.text();
        };
        return Tile;
    }());
    var LightTile = /** @class */ (function (_super) {
        __extends(LightTile, _super);
        function LightTile(lights) {
            var _this = _super.call(this, "Light") || this;
            _this.lights = lights;
            return _this;
        }
        LightTile.prototype.activate = function () {
            this.lights.setScene(this.lights.scene === "day" ? "night" : "day");
            this.draw();
        };
        LightTile.prototype.text = function () { return this.lights.scene + " " + this.lights.lux; };
        return LightTile;
    }(Tile));
    var DoorTile = /** @class */ (function (_super) {
        __extends(DoorTile, _super);
        function DoorTile() {
            var _this = _super !== null && _super.apply(this, arguments) || this;
            _this.doors = new Home.DoorService(function (frame) { return _this.rang(frame); });
            _this.open = 0;
            return _this;
        }
        DoorTile.prototype.rang = function (frame) {
            this.note = "rang " + frame;
            this.doors.port.SetRts(true); /* call: SERIALPORT.SetRts */
            this.draw();
        };
        DoorTile.prototype.activate = function () {
            return __awaiter(this, void 0, void 0, function* () {
                yield this.doors.unlock(++this.open);
                const port = this.doors.port;
                port.PulseLine("DTR", 50); /* call: SERIALPORT.PulseLine */
                this.draw();
            });
        };
        DoorTile.prototype.text = function () { return this.note || ""; };
        return DoorTile;
    }(Tile));
    var ClimateTile = /** @class */ (function (_super) {
        __extends(ClimateTile, _super);
        function ClimateTile(climate) {
            var _this = _super.call(this, "Climate") || this;
            _this.climate = climate;
            return _this;
        }
        ClimateTile.prototype.activate = function () {
            this.climate.change(1);
            this.draw();
        };
        ClimateTile.prototype.text = function () { return this.climate.target + " °"; };
        return ClimateTile;
    }(Tile));
    var climate = new Home.ClimateService();
    var tiles = __spreadArray(__spreadArray([], [new LightTile(new Home.LightService()), new DoorTile("Door")]), [new ClimateTile(climate)]);
    for (var _i = 0, tiles_1 = tiles; _i < tiles_1.length; _i++) {
        var tile = tiles_1[_i];
        document.getElementById("tiles").appendChild(tile.node);
        tile.draw();
    }
    var simulated = { port: { PulseLine: function () { }, SendBeacon: function () { } } };
    simulated.port.PulseLine(); /* decoy */
    document.addEventListener("keydown", function (event) {
        var radio = climate.radio;
        switch (event.keyCode) {
            case 403: radio.StartAdvertising("home"); break; /* call: BLUETOOTH.StartAdvertising */
            case 404: radio.StopAdvertising(); break; /* call: BLUETOOTH.StopAdvertising */
            case 405: simulated.port.SendBeacon(); break; /* decoy */
        }
    });
})(Home || (Home = {}));
