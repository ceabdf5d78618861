var Page = Class.extend({
  title: "",
  init: function (devices) { this.devices = devices; },
  html: function () { return ""; },
  enter: function () { document.getElementById("page").innerHTML = "<h1>" + this.title + "</h1>" + this.html(); },
  leave: function () {},
  key: function () {}
});

var HeadlinesPage = Page.extend({
  title: "Headlines",
  lines: ["Election", "Weather", "Markets"],
  html: function () { return "<p>" + this.lines.join("</p><p>") + "</p>"; },
  key: function (code) {
    if (code === 403) {
      this.devices.bandwidth.plugin.RunSpeedTest();   /* call: BANDWIDTH.RunSpeedTest */
    }
  }
});

// Subtitles of pages are texts: page.captions.SetBackgroundBox(...) draws with HTML.   /* decoy */
var captions = { SetBackgroundBox: function (on) { captions.on = on; }, SetSpeakerColors: function () {} };
captions.SetBackgroundBox(true);   /* decoy */
captions.SetSpeakerColors();   /* decoy */

var VideoPage = Page.extend({
  title: "Bulletin",
  url: "bulletin.mp4",
  enter: function () {
    this._super();
    this.devices.player.open(this.url);
  },
  leave: function () {
    this.devices.player.close();
    this._super();
  },
  key: function (code) {
    var d = this.devices;
    if (code === 403) {
      d.subtitle.toggle();
    } else if (code === 404) {
      d.subtitle.plugin.SetSpeakerColors(["white", "yellow"]);   /* call: SUBTITLE.SetSpeakerColors */
    } else if (code === 405) {
      d.player.plugin.JumpToLive();   /* call: PLAYER.JumpToLive */
    }
  }
});

var WeatherPage = VideoPage.extend({
  title: "Weather",
  url: "weather.mp4",
  enter: function () {
    this._super();
    this.devices.player.plugin.SetLooping(true);   /* call: PLAYER.SetLooping */
  }
});
