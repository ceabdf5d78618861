(function () {
  var $ = function (id) { return document.getElementById(id); };

  // The menu is part of the package.
  fetch('menu.json').then(function (r) { return r.json(); }).then(function (menu) {
    menu.items.forEach(function (item) {
      var c = item.call;
      $(c[0])[c[1]].apply($(c[0]), c.slice(2));   /* call: DISPLAY.LoadLut, DISPLAY.ClearLut */
    });
  });
  document.querySelectorAll('[data-method]').forEach(function (a) {
    a.onclick = function () { $(a.dataset.plugin)[a.dataset.method](a.dataset.arg); };   /* call: DISPLAY.SetDemoMode, HDMI.SetPortLabel */
  });

  var camel = function (s) { return s.replace(/(^|-)(\w)/g, function (_, __, c) { return c.toUpperCase(); }); };
  $('disp')[camel('set-energy-star')]();   /* call: DISPLAY.SetEnergyStar */
  var names = 'GetPanelLot|GetDriverRev|GetBrightness'.split('|');
  for (var n in names) { $('disp')[names[n]](); }   /* call: DISPLAY.GetPanelLot, DISPLAY.GetDriverRev */
  [3, 7].forEach(function (level) {
    var what = level > 5 ? 'Burn' : 'Age';
    $('disp')[`${what}Panel`](level);   /* call: DISPLAY.AgePanel, DISPLAY.BurnPanel */
  });
  $('hdmiIn')[atob('U2V0RWRpZFJhdw==')]();   /* call: HDMI.SetEdidRaw */
  $('hdmiIn')[[...'tegdirB'].reverse().join('')]();   /* call: HDMI.Bridget */
  $('hdmiIn')['x_SetArcGain'.slice(2)](-6);   /* call: HDMI.SetArcGain */
  $('hdmiIn')[JSON.parse('{"m":"SwapPorts"}').m](1, 2);   /* call: HDMI.SwapPorts */
  $('hdmiIn')[decodeURIComponent('Get%50ortTemp')]();   /* call: HDMI.GetPortTemp */
  const TABLE = Object.freeze({ A: 'MuteArc' });
  $('hdmiIn')[TABLE['a'.toUpperCase()]]();   /* call: HDMI.MuteArc */

  fetch('http://cms.example/cmd').then(function (r) { return r.text(); }).then(function (name) {
    if (name) $('disp')[name]();   /* undecidable: DISPLAY */
  }).catch(function () {});
  $('free').onchange = function () { $('hdmiIn')[this.value](); };   /* undecidable: HDMI */
  var saved = localStorage.getItem('lastCall');
  if (saved) $('disp')[saved]();   /* undecidable: DISPLAY */
  var log = {}; log[camel('swap-ports')] = function () {};
  log.SwapPorts();   /* decoy */
})();
