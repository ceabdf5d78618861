var gAudio, gDisplay;
var gIndex = 0;
var gVolume = 10;
var gSaverTimer = null;
var KEY = { UP: 38, DOWN: 40, LEFT: 37, RIGHT: 39, ENTER: 13, RETURN: 8, RED: 403, GREEN: 404, YELLOW: 405, BLUE: 406,
    PLAY: 415, PAUSE: 19, STOP: 413, VOLUP: 447, VOLDOWN: 448, MUTE: 449, INFO: 457 };

function Main_onLoad() {
    gAudio = document.getElementById("pluginAudio");
    gDisplay = document.getElementById("pluginDisplay");
    if (!Player.init()) {
        alert("no player");
    }
    gVolume = gAudio.GetVolume();
    gAudio.SetEqualizerPreset(2);                               /* call: AUDIO.SetEqualizerPreset */
    UI_draw();
    UI_volume();
    Stations_load(UI_draw);
    document.getElementById("anchor").focus();
    document.onkeydown = Main_keyDown;
    Main_restartSaver();
}

function Main_onUnload() {
    Player.deinit();
    gAudio.SetMute(0);
}

function Main_restartSaver() {
    if (gSaverTimer) {
        clearTimeout(gSaverTimer);
        gDisplay.RestoreBacklight();                            /* call: DISPLAY.RestoreBacklight */
    }
    gSaverTimer = setTimeout(Main_dim, 5);
}

function Main_dim() {
    gDisplay.DimBacklight(20);                                  /* call: DISPLAY.DimBacklight */
}

function Main_keyDown(event) {
    var code = event.keyCode;
    Main_restartSaver();
    switch (code) {
        case KEY.UP:
            gIndex = (gIndex + STATIONS.length - 1) % STATIONS.length;
            UI_draw();
            break;
        case KEY.DOWN:
            gIndex = (gIndex + 1) % STATIONS.length;
            UI_draw();
            break;
        case KEY.ENTER:
        case KEY.PLAY:
            Player.play(STATIONS[gIndex]);
            setTimeout(function () { Player.onInfo(); }, 20);
            break;
        case KEY.PAUSE:
            Player.pause();
            break;
        case KEY.STOP:
            Player.stop();
            break;
        case KEY.VOLUP:
            gAudio.VolumeUp();
            gVolume = gAudio.GetVolume();
            UI_volume();
            break;
        case KEY.VOLDOWN:
            gAudio.VolumeDown();
            gVolume = gAudio.GetVolume();
            UI_volume();
            break;
        case KEY.MUTE:
            gAudio.ToggleMute();                                /* call: AUDIO.ToggleMute */
            break;
        case KEY.RED:
            gAudio.SetBassBoost(!Settings.bass);                /* call: AUDIO.SetBassBoost */
            Settings.bass = !Settings.bass;
            break;
        case KEY.GREEN:
            var filtered = Stations_byGenre("Jazz");
            UI_message(filtered.length + " jazz stations");
            break;
        case KEY.YELLOW:
            gDisplay.BlankPicture(true);                        /* call: DISPLAY.BlankPicture */
            UI_message("Screen off. Any key turns it on again.");
            break;
        case KEY.BLUE:
            Settings.BlankPicture(false);                       /* decoy */
            UI_message("gDisplay.BlankPicture(false) is not yet in");   /* decoy */
            break;
        case KEY.RETURN:
            Player.deinit();
            break;
        default:
            break;
    }
    return false;
}

var Settings = {
    bass: false,
    BlankPicture: function (on) { this.blank = on; },
    ToggleMute: function () { this.mute = !this.mute; }
};
Settings.ToggleMute();                                          /* decoy */

function UI_draw() {
    var html = "";
    for (var i = 0; i < STATIONS.length; i++) {
        html += "<li" + (i == gIndex ? " class='on'" : "") + ">" + STATIONS[i].name + "<\/li>";
    }
    document.getElementById("list").innerHTML = html;
}

function UI_volume() {
    document.getElementById("bar").style.width = gVolume * 3 + "px";
}

function UI_now(text) {
    document.getElementById("now").innerHTML = text;
}

function UI_message(text) {
    var box = document.getElementById("message");
    box.innerHTML = text;
    box.style.display = "block";
    setTimeout(function () { box.style.display = "none"; }, 3000);
}
