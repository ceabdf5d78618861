var menu;
var audio = null;

window.onload = function () {
    audio = document.getElementById("audio");
    var hdmi = document.getElementById("hdmi");

    addSetting("mode", "Output", ["stereo", "surround", "headphones"], function (v) {
        audio.SetOutputMode(v);
        if (v == "headphones") {
            audio.SetHeadphoneGain(3);           /* call: AUDIO.SetHeadphoneGain */
        }
    });
    addSetting("bass", "Bass", [0, 1, 2, 3, -1, -2, -3], function (v) {
        audio.SetBass(v);                       /* call: AUDIO.SetBass */
    });
    addSetting("treble", "Treble", [0, 1, 2, 3, -1, -2, -3], function (v) {
        audio.SetTreble(v);                     /* call: AUDIO.SetTreble */
    });
    addSetting("balance", "Balance", [0, 1, 2, -1, -2], function (v) {
        audio.SetBalance(v);                    /* call: AUDIO.SetBalance */
    });
    addSetting("night", "Night mode", ["off", "on"], function (v) {
        audio.SetDynamicRange(v === "on" ? "narrow" : "wide");      /* call: AUDIO.SetDynamicRange */
    });
    addSetting("delay", "Lip sync", [0, 20, 40, 60, 80, 100], function (v) {
        audio.SetLipSyncDelay(v);               /* call: AUDIO.SetLipSyncDelay */
    });
    addSetting("arc", "Return channel", ["off", "auto"], function (v) {
        hdmi.SetArcMode(v);                     /* call: HDMI.SetArcMode */
        document.getElementById("hint").innerHTML = v == "auto" ? hdmi.GetSinkName() : "";   /* also: HDMI.GetSinkName */
    });
    restore();
    hdmi.GetSinkName();                         /* call: HDMI.GetSinkName */
    menu = new Menu(document.getElementById("menu"));
    menu.draw();
};

window.onkeydown = function (event) {
    switch (event.keyCode) {
    case 38: menu.move(-1); break;
    case 40: menu.move(1); break;
    case 37: menu.change(-1); break;
    case 39: menu.change(1); break;
    case 13: save(); break;
    case 403: resetAll(); break;
    case 404: demo(); break;
    }
};

// What the sales room shows: it changes nothing in the set.
var demoAudio = {
    log: [],
    SetBass: function (v) { this.log.push("bass " + v); },
    SetTreble: function (v) { this.log.push("treble " + v); }
};

function demo() {
    demoAudio.SetBass(3);                       /* decoy */
    demoAudio.SetTreble(2);                     /* decoy */
    document.getElementById("hint").innerHTML = demoAudio.log.join(", ");
    console.log("audio.SetBalance(0)");         /* decoy */
}
