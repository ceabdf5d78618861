(function (guide, undefined) {
  var channel = TV.$("channelPlugin");
  guide.data.open();
  guide.view.draw();

  document.addEventListener("keydown", function (e) {
    var view = guide.view;
    switch (e.keyCode) {
      case 37: view.move(0, -1); break;
      case 38: view.move(-1, 0); break;
      case 39: view.move(0, 1); break;
      case 40: view.move(1, 0); break;
      case 13: channel.SetChannel(view.current().id); break;
      case 457: view.info(); break;
      case 403: guide.reminders.record(view.current()); break;
      case 404: guide.reminders.recordSeries(view.current()); TV.$("info").innerHTML = guide.reminders.conflicts(); break;
      case 405: guide.reminders.forget(view.current()); break;
      case 417: guide.data.turn(1); view.draw(); break;
      case 412: guide.data.turn(-1); view.draw(); break;
      case 427: channel.ZapToNextFavourite(); break;    /* call: CHANNEL.ZapToNextFavourite */
      case 428: channel.ChannelDown(); break;
      default: return;
    }
    e.preventDefault();
  }, false);
}(TV.guide));
