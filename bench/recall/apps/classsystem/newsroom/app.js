var App = Class.extend({
  init: function () {
    var bandwidth = new BandwidthDevice();
    this.devices = { bandwidth: bandwidth, player: new AdaptivePlayer(bandwidth), subtitle: new SubtitleDevice() };
    this.pages = [new HeadlinesPage(this.devices), new VideoPage(this.devices), new WeatherPage(this.devices)];
    this.show(0);
  },

  show: function (index) {
    if (this.page) {
      this.page.leave();
    }
    this.page = this.pages[index];
    this.page.enter();
  },

  key: function (code) {
    if (code >= 49 && code < 49 + this.pages.length) {
      this.show(code - 49);
    } else if (code === 48) {
      var none = new NullPlayer();
      none.open();
      none.close();
    } else {
      this.page.key(code);
    }
  }
});

window.onload = function () {
  var app = new App();
  app.page.key(403);
  document.onkeydown = function (e) { app.key(e.keyCode); };
};
