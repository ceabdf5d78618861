(function () {
  'use strict';
  var power = byId('pw'), network = byId('nw'), screen = byId('sc');
  var widgets = createWidgets(power, network);
  var at = 0, timer, config = { every: 50, layout: 'grid', plugins: { screen: screen } };

  function draw() {
    byId('d').innerHTML = widgets.map(function (widget, i) {
      return '<div class="' + (i === at ? 'on' : '') + '"><h3>' + widget.title + '</h3>' +
        widget.refresh() + ' (' + widget.average().toFixed(1) + ')</div>';
    }).join('');
  }

  function start() {
    if (!timer) {
      timer = setInterval(draw, config.every);
      config.plugins.screen.SetRefreshHint('slow');            /* call: SCREEN.SetRefreshHint */
    }
  }

  function stop() {
    clearInterval(timer);
    timer = null;
    var target = config.plugins.screen;
    target && target.ReleaseRefreshHint();                     /* call: SCREEN.ReleaseRefreshHint */
  }

  function exportTable() {
    var table = network.GetSocketTable();                      /* call: NETWORK.GetSocketTable */
    widgets[0].GetSocketTable();                               /* decoy */
    return table ? network.UploadTable(table) : power.LogEvent('no table');   /* call: NETWORK.UploadTable */
  }

  function wake(mode) {
    var method = mode === 'lan' ? 'EnableWakeOnLan' : 'EnableWakeOnCec';   /* also: POWER.EnableWakeOnLan, POWER.EnableWakeOnCec */
    power[method](1);                                          /* call: POWER.EnableWakeOnLan, POWER.EnableWakeOnCec */
  }

  document.onkeydown = function (e) {
    switch (e.keyCode) {
      case 37: at = Math.max(0, at - 1); break;
      case 39: at = Math.min(widgets.length - 1, at + 1); break;
      case 403: start(); break;
      case 404: stop(); break;
      case 405: exportTable(); break;
      case 406: wake('lan'); break;
      case 415: wake('cec'); break;
      case 413: screen.SaveLayout(config.layout), screen.NotifyLayout(widgets.length); break;   /* call: SCREEN.SaveLayout, SCREEN.NotifyLayout */
    }
    draw();
  };
  start();
  draw();
}());
