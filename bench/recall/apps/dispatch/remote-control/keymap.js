// Which key does what: [plug-in, method, arguments...] or a function.
var KEYMAP = {
    13:  ['hdmi', 'SendCecKey', 'select'],
    37:  ['hdmi', 'SendCecKey', 'left'],
    38:  ['hdmi', 'SendCecKey', 'up'],
    39:  ['hdmi', 'SendCecKey', 'right'],
    40:  ['hdmi', 'SendCecKey', 'down'],
    8:   ['hdmi', 'SendCecKey', 'exit'],
    403: ['remote', 'BlinkBacklight', 2],
    404: ['remote', 'FindMe'],
    405: ['power', 'CycleOutlet', 1],
    406: ['serial', 'SendHex', '02 41 03'],
    412: ['hdmi', 'SelectInput', 1],
    417: ['hdmi', 'SelectInput', 2],
    413: function (plugins) { plugins('hdmi').SetCecStandby(true); },       /* call: HDMI.SetCecStandby */
    415: function (plugins) { plugins('hdmi').WakeAllDevices(); }           /* call: HDMI.WakeAllDevices */
};

// Macros: several steps, one after the other.
var MACROS = {
    film: [
        ['power', 'WakeUp'],
        ['hdmi', 'SelectInput', 3],
        ['hdmi', 'SetGameMode', 0],
        ['serial', 'SendText', 'SCREEN DOWN']
    ],
    game: [
        ['hdmi', 'SelectInput', 2],
        ['hdmi', 'SetGameMode', 1]
    ],
    off: [
        ['serial', 'SendText', 'SCREEN UP'],
        ['power', 'CutPeripherals'],
        ['power', 'SetStandby']
    ]
};
