/**
 * Room television of the hotel: welcome page, wake-up call, bill, languages.
 */
;(function (window, document) {
  'use strict';

  var $ = function (id) { return document.getElementById(id); };
  var power = $('power'), clock = $('clock'), net = $('net'), locale = $('locale'), sec = $('sec');

  var texts = {
    en: { hello: 'Welcome', wake: 'Wake-up call', bill: 'Your bill', lang: 'Language', pin: 'Adult lock', out: 'Check-out' },
    de: { hello: 'Willkommen', wake: 'Weckruf', bill: 'Rechnung', lang: 'Sprache', pin: 'Jugendschutz', out: 'Abreise' },
    fr: { hello: 'Bienvenue', wake: 'Réveil', bill: 'Votre note', lang: 'Langue', pin: 'Verrou adulte', out: 'Départ' }
  };
  var languages = ['en', 'de', 'fr'];
  var state = { lang: 'en', focus: 0, room: null, wake: null };

  function t(key) { return texts[state.lang][key]; }

  var items = [
    { id: 'wake', run: openWake },
    { id: 'bill', run: openBill },
    { id: 'lang', run: nextLanguage },
    { id: 'pin', run: togglePin },
    { id: 'out', run: checkOut }
  ];

  function render() {
    $('hello').textContent = t('hello') + (state.room ? ' – ' + state.room : '');
    $('menu').innerHTML = items.map(function (item, i) {
      return '<li class="' + (i === state.focus ? 'focus' : '') + '">' + t(item.id) + '</li>';
    }).join('');
  }

  function readRoom() {
    state.room = net.GetRoomNumber();                          /* call: NETWORK.GetRoomNumber */
    if (!state.room) {
      state.room = String(net.GetHostName()).replace(/^tv-/, '');
    }
    net.JoinMulticast('239.7.7.7', 5004);                      /* call: NETWORK.JoinMulticast */
  }

  var ticks = 0;
  function tick() {
    var now = new Date();
    $('clockface').textContent = now.getHours() + ':' + ('0' + now.getMinutes()).slice(-2);
    if (clock.GetDrift() && ++ticks % 60 === 1) {              /* call: CLOCK.GetDrift */
      clock.SyncWithServer('time.hotel.example');              /* call: CLOCK.SyncWithServer */
      clock.MarkSynchronised();                                /* call: CLOCK.MarkSynchronised */
    }
  }

  function openWake() {
    var at = state.wake || { h: 7, m: 0 };
    clock.SetAlarm(at.h, at.m);
    clock.SetAlarmMelody('birds');                             /* call: CLOCK.SetAlarmMelody */
    power.AllowWakeByAlarm(true);                              /* call: POWER.AllowWakeByAlarm */
    state.wake = at;
    $('panel').innerHTML = t('wake') + ' ' + at.h + ':' + ('0' + at.m).slice(-2);
  }

  function openBill() {
    fetchJson('/bill?room=' + state.room, function (bill) {
      $('panel').innerHTML = bill ? bill.total + ' EUR' : 'Reception: dial 9';
    });
  }

  function nextLanguage() {
    var at = (languages.indexOf(state.lang) + 1) % languages.length;
    state.lang = languages[at];
    locale.SetLanguage(state.lang);
    locale.SetKeyboardRegion(state.lang);                      /* call: LOCALE.SetKeyboardRegion */
    locale.ReloadMessages();                                   /* call: LOCALE.ReloadMessages */
    render();
  }

  var pinOn = false;
  function togglePin() {
    pinOn = !pinOn;
    if (pinOn) {
      sec.EnableAdultLock();                                   /* call: SECURITY.EnableAdultLock */
    } else {
      sec.DisableAdultLock();                                  /* call: SECURITY.DisableAdultLock */
    }
  }

  function checkOut() {
    sec.WipeGuestData();                                       /* call: SECURITY.WipeGuestData */
    clock.CancelAlarm();
    net.LeaveMulticast('239.7.7.7');                           /* call: NETWORK.LeaveMulticast */
    power.ScheduleStandby(1);                                  /* call: POWER.ScheduleStandby */
    log.WipeGuestData();                                       /* decoy */
    state = { lang: 'en', focus: 0, room: state.room, wake: null };
    render();
  }

  // Keeps what happened for the technician. It has the names of the plug-ins, so that its output reads like the code.
  var log = {
    lines: [],
    WipeGuestData: function () { this.lines.push('wipe'); },
    ScheduleStandby: function (n) { this.lines.push('standby ' + n); }
  };

  function fetchJson(path, callback) {
    var xhr = new XMLHttpRequest();
    xhr.open('GET', 'http://pms.hotel.example' + path);
    xhr.onload = function () {
      var data = null;
      try { data = JSON.parse(xhr.responseText); } catch (ignored) { data = null; }
      callback(data);
    };
    xhr.onerror = function () { callback(null); };
    xhr.send();
  }

  document.addEventListener('keydown', function (e) {
    switch (e.keyCode) {
    case 38: state.focus = Math.max(0, state.focus - 1); render(); break;
    case 40: state.focus = Math.min(items.length - 1, state.focus + 1); render(); break;
    case 13: items[state.focus].run(); break;
    case 403: openWake(); break;
    case 404: openBill(); break;
    case 405: nextLanguage(); break;
    case 406: togglePin(); break;
    case 413: checkOut(); log.ScheduleStandby(1); break;       /* decoy */
    case 461: power.BlockPowerKey(false); break;               /* call: POWER.BlockPowerKey */
    }
  });

  readRoom();
  render();
  tick();
  setInterval(tick, 1000);
}(window, document));
