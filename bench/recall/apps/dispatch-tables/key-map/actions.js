var audio = document.getElementById("audioPlugin");
var display = document.getElementById("displayPlugin");
var channel = document.getElementById("channelPlugin");

onKey(VK.UP, function () { audio.VolumeUp(); audio.ClickFeedback(1); });   /* call: AUDIO.ClickFeedback */
onKey(VK.DOWN, function () { audio.VolumeDown(); });
onKey(VK.LEFT, function () { channel.ChannelDown(); channel.PeekNeighbour(-1); });   /* call: CHANNEL.PeekNeighbour */
onKey(VK.ENTER, zap);

function zap() { channel.CommitZap({ fast: true }); }   /* call: CHANNEL.CommitZap */

var colours = {
    403: function () { display.SetGammaTable([0, 1, 2]); },   /* call: DISPLAY.SetGammaTable */
    404: function () { display.GetBrightness(); display.CalibratePanel(); },   /* call: DISPLAY.CalibratePanel */
    405: calibrateSound,
    406: function (e) { this.help(e); },
    help: function () { display.DrawTestPattern("grid"); }   /* call: DISPLAY.DrawTestPattern */
};
function calibrateSound() { audio.MeasureRoom(0); }   /* call: AUDIO.MeasureRoom */
for (var code in colours) { if (code > 0) { (function (c) { onKey(c, function (e) { colours[c](e); }); })(code); } }

// Digits: a table of what each does, as rows.
var digits = [
    [48, audio, "RestoreFactory"],
    [49, display, "LockBacklight"],
    [50, channel, "RenumberList"],
    [51, audio, "GetVolume"]
];
function onDigit(e) {
    for (var i = 0; i < digits.length; i++) {
        if (digits[i][0] == e.keyCode) {
            digits[i][1][digits[i][2]]();   /* call: AUDIO.RestoreFactory, DISPLAY.LockBacklight, CHANNEL.RenumberList */
        }
    }
}
document.addEventListener("keydown", onDigit, false);

var commands = { loud: "BoostDialogue", wide: "StretchPanorama" };
function command(name, target) { target[commands[name]](1); }   /* call: AUDIO.BoostDialogue, DISPLAY.StretchPanorama */
command("loud", audio);
command("wide", display);

var table = { audio: { MeasureRoom: function () { return 0; }, WipeList: function () { } } };
table.audio.MeasureRoom();   /* decoy */
table["audio"]["WipeList"]();   /* decoy */
