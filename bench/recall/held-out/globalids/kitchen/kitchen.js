var selected = 0;

function start() {
  tvPower.PreventStandby(true);                         /* call: POWER.PreventStandby */
  window.tvClock.SetTickInterval(250);                  /* call: CLOCK.SetTickInterval */
  drawPresets();
  setInterval(tick, 60);
}

function drawPresets() {
  var html = "";
  for (var i = 0; i < PRESETS.length; i++) {
    html += "<span" + (i == selected ? " class='on'" : "") + ">" + PRESETS[i][0] + "</span> ";
  }
  presets.innerHTML = html;
}

function pad(n) { return n < 10 ? "0" + n : "" + n; }

function tick() {
  var text = "";
  for (var i = running.length - 1; i >= 0; i--) {
    var t = running[i], s = t.left();
    text += t.name + " " + pad(Math.floor(s / 60)) + ":" + pad(s % 60) + " ";
    if (t.finished()) {
      running.splice(i, 1);
      ring(t);
    }
  }
  display.innerHTML = text || "00:00";
}

function ring(t) {
  tvNote.ShowMessage(t.name + " is ready");
  tvNote.PlaySound("bell");                             /* call: NOTIFICATION.PlaySound */
  if (self.tvPower) self.tvPower.WakeDisplay(10);       /* call: POWER.WakeDisplay */
  this["tvClock"].CancelAlarm();
  this["tvClock"].ClearLabels();                        /* call: CLOCK.ClearLabels */
}

function snooze() {
  if (running.length) running[0].SnoozeAlarm(60);       /* decoy */
  tvClock.SnoozeAlarm(60);                              /* call: CLOCK.SnoozeAlarm */
}

// "all" by browser
function element(id) {
  if (document.all && document.all[id]) return document.all[id];
  return document.getElementById(id);
}

document.onkeydown = function (event) {
  var code = event.keyCode;
  if (code == 37 || code == 39) {
    selected = (selected + (code == 39 ? 1 : PRESETS.length - 1)) % PRESETS.length;
    drawPresets();
  } else if (code == 13) {
    running.push(new CookTimer(PRESETS[selected][0], PRESETS[selected][1]));
  } else if (code >= 49 && code <= 52) {
    running.push(new CookTimer(PRESETS[code - 49][0], PRESETS[code - 49][1]));
  } else if (code == 403) {
    snooze();
  } else if (code == 404) {
    element("tvNote").SetVolumeBoost(3);                /* call: NOTIFICATION.SetVolumeBoost */
  } else if (code == 405) {
    (document.tvNote || element("tvNote")).DismissAll();      /* call: NOTIFICATION.DismissAll */
  } else if (code == 457) {
    var names = ["tvClock", "tvPower"];
    for (var i in names) {
      window[names[i]].ReportUsage("kitchen");          /* call: CLOCK.ReportUsage */
    }
  } else if (code == 461) {
    tvPower.PreventStandby(false);                      /* also: POWER.PreventStandby */
    var recipe = "tvPower.CookMode(1)";                 /* decoy */
    display.title = recipe;
  }
};
