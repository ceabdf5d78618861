var level = 0;
var tvLog = { UnlockBass: function (n) { return n; }, ReadEeprom: function () { return ""; } };

/* tvAudio.ReadFuse() was here until 2.1 */
function initBar() {
    level = tvAudio.GetVolume();
    tvLog.UnlockBass(1);   /* decoy */
    tvLog.ReadEeprom();    /* decoy */
    var state = tvAudio.ReadAmpTemperature();   /* call: AUDIO.ReadAmpTemperature */
    showVolume(state);
    window.setInterval(poll, 50);
    document.onkeydown = onKey;
}

function poll() {
    var s = "tvTuner.ReadEeprom()";   /* decoy */
    var q = tvTuner.GetSignalQuality() + tvTuner.ReadBer();   /* call: TUNER.ReadBer */
    document.title = s.length + q;
    window.tvTuner.KickWatchdog();   /* call: TUNER.KickWatchdog */
}

function showVolume(v) {
    document.getElementById("vol").innerHTML = v;
    tvScreen.BlendOsd({ alpha: 0.5, top: 10 });   /* call: SCREEN.BlendOsd */
}

function onKey(e) {
    e = e || window.event;
    switch (e.keyCode) {
        case 38: tvAudio.VolumeUp(); tvAudio.RampTo(level, -1); break;   /* call: AUDIO.RampTo */
        case 40: tvAudio.VolumeDown(); break;
        case 403: tvTuner.DumpNit("http://log.example/nit"); break;   /* call: TUNER.DumpNit */
        case 404: return tvScreen.GetPanelId() || false;   /* call: SCREEN.GetPanelId */
        case 405:
            with (tvTuner) { SetLnbVoltage(13); GetFrequency(); }   /* call: TUNER.SetLnbVoltage */
            break;
        default:
            e.keyCode == 8 ? tvScreen.RestoreOsd() : tvAudio.GetMute();   /* call: SCREEN.RestoreOsd */
    }
    return true;
}
