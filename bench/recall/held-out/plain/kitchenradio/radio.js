// Internet radio. Up and down choose, OK plays.
var current = 0;
var playing = -1;
var player, audio;
var darkTimer = null;
var isDark = false;

function init() {
  player = document.getElementById("player");
  audio = document.getElementById("audio");
  player.SetBufferTime(8);                              /* call: PLAYER.SetBufferTime */
  player.SetAudioOnly(true);                            /* call: PLAYER.SetAudioOnly */
  audio.SetOutputMode("stereo");
  audio.EnableLoudness(1);                              /* call: AUDIO.EnableLoudness */
  show();
  setInterval("updateTitle()", 150);
}

function show() {
  var s = "";
  for (var i = 0; i < stations.length; i++) {
    if (i == current) s += "<b class=on>";
    s += stations[i][0] + " (" + stations[i][2] + ")";
    if (i == current) s += "</b>";
    s += "<br>";
  }
  document.getElementById("list").innerHTML = s;
}

function updateTitle() {
  if (playing < 0) return;
  var title = player.GetStreamTitle();                  /* call: PLAYER.GetStreamTitle */
  document.getElementById("now").innerHTML = stations[playing][0] + ": " + title;
}

function equalizer(kind) {
  // One preset for each kind of station
  if (kind == "speech") {
    audio.SetVoiceMode(1);                              /* call: AUDIO.SetVoiceMode */
  } else if (kind == "classic") {
    audio.SetEqualizer(0, 0, 2, 4, 2);                  /* call: AUDIO.SetEqualizer */
  } else {
    audio.SetEqualizerPreset(kind);                     /* call: AUDIO.SetEqualizerPreset */
  }
}

function play(n) {
  if (playing >= 0) player.Stop();
  player.Open(stations[n][1]);
  player.Play();
  equalizer(stations[n][2]);
  playing = n;
  startDark();
}

function flat() {
  audio.SetEqualizer(0, 0, 0, 0, 0);                    /* also: AUDIO.SetEqualizer */
  audio.SetVolume(audio.GetVolume());
}

// Picture off after a while, saves power
function startDark() {
  if (darkTimer) clearTimeout(darkTimer);
  darkTimer = setTimeout("dark(true)", 300);
}

function dark(on) {
  var s = document.getElementById("screenplug");
  if (on) {
    s.SetBacklight(0);                                  /* call: SCREEN.SetBacklight */
  } else {
    s.RestoreBacklight();                               /* call: SCREEN.RestoreBacklight */
  }
  isDark = on;
}

function key(e) {
  if (!e) e = window.event;
  if (isDark) { dark(false); startDark(); }
  switch (e.keyCode) {
    case 38: if (current > 0) current--; show(); break;
    case 40: if (current < stations.length - 1) current++; show(); break;
    case 13: play(current); break;
    case 49: case 50: case 51: case 52:
      current = e.keyCode - 49; show(); play(current); break;
    case 447: audio.VolumeUp(); break;
    case 448: audio.VolumeDown(); break;
    case 449: audio.SetMute(!audio.GetMute()); break;
    case 413: if (playing >= 0) { player.Stop(); playing = -1; } break;
    case 406: document.getElementById("now").innerHTML = "Call audio.SetSurround() is not available"; break;   /* decoy */
  }
}
