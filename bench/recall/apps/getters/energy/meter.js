"use strict";

var Meter = Object.create(Object.prototype, {
    power: {
        get: function () { return devices.power; }
    },
    watts: {
        get: function () {
            return this.power.GetConsumption() / 10;       /* call: POWER.GetConsumption */
        }
    },
    limit: {
        get: function () { return this._limit || 0; },
        set: function (watts) {
            this._limit = watts;
            this.power.SetConsumptionLimit(watts);         /* call: POWER.SetConsumptionLimit */
        }
    },
    saving: {
        get: function () { return this._saving === true; },
        set: function (on) {
            this._saving = on;
            devices.display.SetBrightness(on ? 30 : 80);
            devices.display.SetPanelPower(on ? "eco" : "normal");   /* call: DISPLAY.SetPanelPower */
            devices.network.SetWakeOnLan(!on);             /* call: NETWORK.SetWakeOnLan */
        }
    },
    _limit: { value: 0, writable: true },
    _saving: { value: false, writable: true }
});

var History = {
    values: [],
    get last() {
        return this.values[this.values.length - 1] || 0;
    },
    get average() {
        return this.values.reduce(function (a, b) { return a + b; }, 0) / (this.values.length || 1);
    },
    get source() {
        devices.power.SelectMeter("internal");             /* call: POWER.SelectMeter */
        return devices.power;
    },
    push: function (v) {
        this.values.push(v);
        if (this.values.length > 60) {
            this.values.shift();
        }
    },
    GetConsumption: function () {
        return this.last;
    }
};
