// What is done at which time, and what the steps of the buttons are. The caretaker changes this file.
var RULES = {
    steps: {
        lights: { plugin: "power", call: "SetStatusLight", args: ["off"] },    /* also: POWER.SetStatusLight */
        standby: { plugin: "power", call: "StandbyAfter", args: [300] },       /* also: POWER.StandbyAfter */
        noise: { plugin: "audio", call: "GateMicrophone", args: [-40] }        /* also: AUDIO.GateMicrophone */
    },
    onStart: [
        ["apps", "SuspendOthers"],                                             /* also: APPLOADER.SuspendOthers */
        ["apps", "GetVersion"],
        ["audio", "LoadRoomProfile", "oak"]                                    /* also: AUDIO.LoadRoomProfile */
    ],
    keys: { "415": "apps.PinApplication", "417": "hdmi.EnableArc", "412": "noise" },   /* also: APPLOADER.PinApplication, HDMI.EnableArc */
    // Not used since the lamps are on the bus:
    old: { plugin: "power", call: "DimLamps" }                                 /* decoy */
};
