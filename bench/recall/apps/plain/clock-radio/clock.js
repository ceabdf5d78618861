// Clock Radio 1.2
// (c) 2009
//
// 1.2  pluginAudio.FadeOut(ms) instead of our own fading     /* decoy */
// 1.1  pluginTuner.SeekUp() and pluginTuner.SeekDown()       /* decoy */
// 1.0  first release

var KEY_RED = 403, KEY_GREEN = 404, KEY_YELLOW = 405, KEY_BLUE = 406;
var KEY_UP = 38, KEY_DOWN = 40, KEY_LEFT = 37, KEY_RIGHT = 39, KEY_ENTER = 13;

var pluginClock, pluginAudio, pluginTuner, pluginPower;

var stations = [
    { name: "Radio One", frequency: 88600 },
    { name: "City FM", frequency: 94300 },
    { name: "Jazz 101", frequency: 101000 },
    { name: "Classic", frequency: 104200 }
];
var currentStation = 0;
var alarmHour = 7;
var alarmMinute = 0;
var alarmOn = false;
var snoozed = 0;
var sleepMinutes = [0, 15, 30, 60, 90];
var sleepIndex = 0;
var timer = null;

function pad(n) {
    return n < 10 ? "0" + n : "" + n;
}

function setText(id, text) {
    var e = document.getElementById(id);
    while (e.firstChild) {
        e.removeChild(e.firstChild);
    }
    e.appendChild(document.createTextNode(text));
}

function init() {
    pluginClock = document.getElementById("pluginClock");
    pluginAudio = document.getElementById("pluginAudio");
    pluginTuner = document.getElementById("pluginTuner");
    pluginPower = document.getElementById("pluginPower");

    pluginAudio.SetVolume(12);
    pluginAudio.SetLoudness(1);                 /* call: AUDIO.SetLoudness */
    pluginTuner.SetSource(2);
    pluginTuner.SetBand("FM");                  /* call: TUNER.SetBand */
    pluginClock.SetTimeZone("Europe/Berlin");
    pluginClock.SyncWithBroadcast();            /* call: CLOCK.SyncWithBroadcast */

    tuneTo(0);
    showAlarm();
    tick();
    timer = setInterval(tick, 10000);
}

function finish() {
    clearInterval(timer);
    pluginClock.CancelAlarm(1);
}

function tick() {
    var now = new Date();
    setText("hours", pad(now.getHours()));
    setText("minutes", pad(now.getMinutes()));
    if (alarmOn && now.getHours() == alarmHour && now.getMinutes() == alarmMinute) {
        wakeUp();
    }
    // It is darker at night.
    if (now.getHours() > 22 || now.getHours() < 6) {
        document.getElementById("face").className = "dim";
    }
}

function tuneTo(index) {
    currentStation = (index + stations.length) % stations.length;
    var s = stations[currentStation];
    pluginTuner.SetFrequency(s.frequency);
    pluginTuner.SetStereoMode("auto");          /* call: TUNER.SetStereoMode */
    var rds = pluginTuner.GetRdsText();         /* call: TUNER.GetRdsText */
    setText("station", s.name + (rds && rds != 1 ? " - " + rds : ""));
}

function wakeUp() {
    pluginPower.WakeUp();
    pluginAudio.SetVolume(5);
    fadeIn(5);
}

function fadeIn(v) {
    if (v > 20) {
        return;
    }
    pluginAudio.SetVolume(v);
    setTimeout(function () { fadeIn(v + 1); }, 1000);
}

function showAlarm() {
    setText("alarmTime", (alarmOn ? "on " : "off ") + pad(alarmHour) + ":" + pad(alarmMinute));
}

function toggleAlarm() {
    alarmOn = !alarmOn;
    if (alarmOn) {
        pluginClock.SetAlarm(alarmHour * 60 + alarmMinute);
        pluginClock.SetAlarmMelody("birds");    /* call: CLOCK.SetAlarmMelody */
    } else {
        pluginClock.CancelAlarm(1);
    }
    showAlarm();
}

function snooze() {
    snoozed++;
    pluginClock.SnoozeAlarm(9);                 /* call: CLOCK.SnoozeAlarm */
    pluginAudio.FadeOut(2000);                  /* call: AUDIO.FadeOut */
}

function sleep() {
    sleepIndex = (sleepIndex + 1) % sleepMinutes.length;
    var m = sleepMinutes[sleepIndex];
    if (m == 0) {
        pluginPower.CancelSleepTimer();
    } else {
        pluginPower.SetSleepTimer(m);
        pluginPower.SetLedBlink(m < 30);        /* call: POWER.SetLedBlink */
    }
    // pluginPower.SetLedColor("blue") did nothing on the 2008 sets    /* decoy */
}

function keyDown(event) {
    switch (event.keyCode) {
    case KEY_RED:
        snooze();
        break;
    case KEY_GREEN:
        toggleAlarm();
        break;
    case KEY_YELLOW:
        tuneTo(currentStation + 1);
        break;
    case KEY_BLUE:
        sleep();
        break;
    case KEY_UP:
        alarmHour = (alarmHour + 1) % 24;
        showAlarm();
        break;
    case KEY_DOWN:
        alarmHour = (alarmHour + 23) % 24;
        showAlarm();
        break;
    case KEY_LEFT:
        pluginTuner.SeekDown();                 /* call: TUNER.SeekDown */
        break;
    case KEY_RIGHT:
        pluginTuner.SeekUp();                   /* call: TUNER.SeekUp */
        break;
    case KEY_ENTER:
        pluginAudio.SetMute(!pluginAudio.GetMute());
        break;
    }
}
