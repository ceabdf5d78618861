var audio = document.getElementById("aud");
var player = document.getElementById("ply");
var equalizer = new Equalizer(audio);
var list = document.getElementById("sliders");
var PRESETS = {
    rock: { Bass: 6, Treble: 4, Balance: 0 },
    talk: { Bass: -2, Treble: 3, Balance: 0 },
    night: { Bass: -6, Treble: -2, Balance: 0 }
};
var names = ["rock", "talk", "night"], current = 0;

equalizer.listeners.push(new Meter(list, "bass"), new Meter(list, "treble"), new Meter(list, "balance"));
var reader = new LevelReader(audio, new Meter(list, "peak"));
reader.Run();                                           /* decoy */
audio.SetBassBoost(true);                               /* call: AUDIO.SetBassBoost */
player.SetAudioDelay(40);                               /* call: PLAYER.SetAudioDelay */

function status(text) {
    document.getElementById("status").innerHTML = text;
}

document.onkeydown = function (e) {
    switch (e.keyCode) {
    case 38:
        equalizer.SetBass(equalizer.bass + 1);          /* decoy */
        break;
    case 40:
        equalizer.SetBass(equalizer.bass - 1);          /* decoy */
        break;
    case 403:
        current = (current + 1) % names.length;
        equalizer.Load(PRESETS[names[current]]);        /* decoy */
        status(names[current]);
        break;
    case 404:
        audio.SetBass(3);                               /* call: AUDIO.SetBass */
        equalizer.Reset();                              /* decoy */
        break;
    case 405:
        audio.Reset("tone");                            /* call: AUDIO.Reset */
        break;
    case 27:
        reader.End();                                   /* decoy */
        player.ReleaseAudio();                          /* call: PLAYER.ReleaseAudio */
        break;
    }
};
