"use strict";

/**
 * Devices of the set. Each is made when it is first asked for:
 *
 *     devices.power.GetPowerState()
 */
var devices = (function () {
    var ids = {
        power: "MORVANE-NAVERTIX-POWER",
        display: "MORVANE-NAVERTIX-DISPLAY",
        light: "MORVANE-NAVERTIX-LIGHTSENSOR",
        network: "MORVANE-NAVERTIX-NETWORK"
    };
    var made = {};

    function create(classId) {
        var node = document.createElement("object");
        node.setAttribute("classid", "clsid:" + classId);
        node.style.visibility = "hidden";
        document.body.appendChild(node);
        return node;
    }

    var self = {};
    Object.keys(ids).forEach(function (name) {
        Object.defineProperty(self, name, {
            enumerable: true,
            get: function () {
                if (!made[name]) {
                    made[name] = create(ids[name]);
                }
                return made[name];
            }
        });
    });
    return Object.freeze(self);
}());
