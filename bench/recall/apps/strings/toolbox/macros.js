// Macros are lines of script: the technicians write them, the toolbox keeps them.
var MACROS = [
    { title: "Light now", code: "lamp.GetLevel()" },
    { title: "Spectrum", code: "lamp.ReadSpectrum(16)" },              /* text: LIGHTSENSOR.ReadSpectrum */
    { title: "CEC bus", code: "hdmi1.SendCecCommand('40:04')" },       /* text: HDMI.SendCecCommand */
    { title: "Deep sleep", code: "power1.EnterDeepSleep(1)" }          /* text: POWER.EnterDeepSleep */
];

// Was shown as help only, never run.
var HELP = {
    reboot: "power1.ForceReboot() restarts the set",                   /* decoy */
    erase: "hdmi1.EraseEdid(1) makes the input forget its source"      /* decoy */
};

function runMacro(macro) {
    var result;
    try {
        result = eval(macro.code);                                     /* also: LIGHTSENSOR.ReadSpectrum, HDMI.SendCecCommand, POWER.EnterDeepSleep */
    } catch (e) {
        result = e.message;
    }
    return result;
}
