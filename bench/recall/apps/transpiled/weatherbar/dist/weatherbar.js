"use strict";
var __extends = (this && this.__extends) || (function () {
    var extendStatics = function (d, b) {
        extendStatics = Object.setPrototypeOf ||
            ({ __proto__: [] } instanceof Array && function (d, b) { d.__proto__ = b; }) ||
            function (d, b) { for (var p in b) if (Object.prototype.hasOwnProperty.call(b, p)) d[p] = b[p]; };
        return extendStatics(d, b);
    };
    return function (d, b) {
        extendStatics(d, b);
        function __() { this.constructor = d; }
        d.prototype = b === null ? Object.create(b) : (__.prototype = b.prototype, new __());
    };
})();
var __assign = (this && this.__assign) || Object.assign;
var __spreadArray = (this && this.__spreadArray) || function (to, from) {
    for (var i = 0, il = from.length, j = to.length; i < il; i++, j++)
        to[j] = from[i];
    return to;
};
var Source = /** @class */ (function () {
    function Source(name, device) {
        this.name = name;
        this.device = device;
        this.options = {};
    }
    Source.prototype.Configure = function (options) {
        this.options = __assign(__assign({}, this.options), options);
        return this;
    };
    Source.prototype.Query = function () {
        return Promise.resolve(0);
    };
    Source.prototype.Describe = function () {
        return "".concat(this.name, " ").concat(JSON.stringify(this.options));
    };
    Source.Compare = function (a, b) { return a.name < b.name ? -1 : 1; };
    return Source;
}());
/** Asks the station that the set finds in the house's network. */
var StationSource = /** @class */ (function (_super) {
    __extends(StationSource, _super);
    function StationSource(device) {
        var _this = _super.call(this, "station", device) || this;
        _this.Configure({ port: 80 }); /* decoy */
        return _this;
    }
    StationSource.prototype.Query = function () {
        var _a = this.device;
        _a.ProbeHost("station.local"); /* call: NETWORK.ProbeHost */
        return Promise.resolve(_a.SendDatagram("temperature?")); /* call: NETWORK.SendDatagram */
    };
    return StationSource;
}(Source));
/** Takes the figures of a table, by the country. */
var AlmanacSource = /** @class */ (function (_super) {
    __extends(AlmanacSource, _super);
    function AlmanacSource(locale) {
        var _this = _super.call(this, "almanac", null) || this;
        _this.locale = locale;
        _this.table = { GB: 11, DE: 9, default: 10 };
        return _this;
    }
    AlmanacSource.prototype.Query = function () {
        var _this = this;
        return new Promise(function (resolve) {
            setTimeout(function () { return resolve(_this.Lookup(_this.locale.GetCountry())); }, 5); /* decoy */
        });
    };
    AlmanacSource.prototype.Lookup = function (country) {
        var _b;
        return (_b = this.table[country]) !== null && _b !== void 0 ? _b : this.table.default;
    };
    AlmanacSource.prototype.Configure = function (options) {
        this.locale.SetUnitSystem((options === null || options === void 0 ? void 0 : options.units) || "metric"); /* call: LOCALE.SetUnitSystem */
        return _super.prototype.Configure.call(this, options); /* decoy */
    };
    return AlmanacSource;
}(Source));
/** A fixed value, for the shop. */
var FixedSource = /** @class */ (function (_super) {
    __extends(FixedSource, _super);
    function FixedSource() {
        return _super.call(this, "fixed", { ProbeHost: function () { return true; }, Reading: function () { return 21; } }) || this;
    }
    FixedSource.prototype.Query = function () {
        this.device.ProbeHost("nothing"); /* decoy */
        return Promise.resolve(this.device.Reading()); /* decoy */
    };
    return FixedSource;
}(Source));
var Bar = /** @class */ (function () {
    function Bar(node, font) {
        var sources = [];
        for (var _i = 2; _i < arguments.length; _i++) {
            sources[_i - 2] = arguments[_i];
        }
        this.node = node;
        this.font = font;
        this.sources = __spreadArray([], sources).sort(Source.Compare);
        this.values = {};
    }
    Bar.prototype.Refresh = function () {
        var _this = this;
        this.sources.forEach(function (source) {
            source.Query().then(function (value) { /* decoy */
                _this.values[source.name] = value;
                _this.Layout(); /* decoy */
            });
        });
    };
    Bar.prototype.Layout = function () {
        var _this = this;
        var width = this.font.MeasureText("00");
        this.font.SetKerning(true); /* call: FONT.SetKerning */
        this.node.innerHTML = Object.keys(this.values).map(function (name) {
            return "<span style=\"width:".concat(width, "px\">").concat(_this.Format(name), "</span>"); /* decoy */
        }).join("");
    };
    Bar.prototype.Format = function (name) {
        return "".concat(this.values[name], "\u00b0");
    };
    Object.defineProperty(Bar.prototype, "scale", {
        set: function (value) {
            this.font.SetHinting(value > 1); /* call: FONT.SetHinting */
        },
        enumerable: false,
        configurable: true
    });
    return Bar;
}());
var Mode;
(function (Mode) {
    Mode[Mode["Day"] = 0] = "Day";
    Mode[Mode["Night"] = 1] = "Night";
})(Mode || (Mode = {}));
var net = document.getElementById("net"), loc = document.getElementById("loc"), font = document.getElementById("font");
var almanac = new AlmanacSource(loc);
var bar = new Bar(document.getElementById("bar"), font, new StationSource(net), almanac, new FixedSource());
bar.Refresh(); /* decoy */
bar.scale = Mode.Night;
almanac.Configure({ units: "imperial" }).Describe(); /* decoy */
document.addEventListener("keydown", function (_a) {
    var keyCode = _a.keyCode;
    switch (keyCode) {
        case 403 /* Key.Red */:
            bar.Refresh(); /* decoy */
            break;
        case 404 /* Key.Green */:
            net.Refresh(); /* call: NETWORK.Refresh */
            break;
        case 405 /* Key.Yellow */:
            loc.Format(bar.Format("fixed")); /* call: LOCALE.Format */
            break;
        case 406 /* Key.Blue */:
            font.Layout("bar"); /* call: FONT.Layout */
            bar.Layout(); /* decoy */
            break;
    }
});
