var weather = {
  locale: document.getElementById("locale"),
  clock: document.getElementById("clock"),
  viewer: document.getElementById("viewer"),
  days: [],
  frame: 0,
  radarOn: false,

  start: function () {
    var self = this;
    document.getElementById("city").textContent = CONFIG.city;
    this.locale.GetCountry();
    var zip = this.locale.GetPostalCode();              /* call: LOCALE.GetPostalCode */
    this.load(zip);
    this.timer = setInterval(function () { self.load(zip); }, CONFIG.refresh);
    document.addEventListener("keydown", function (e) { self.key(e.keyCode); });
    this.clock.SyncWithServer("ntp.example");           /* call: CLOCK.SyncWithServer */
    var rise = this.clock.GetSunrise(52.1, 4.3);        /* call: CLOCK.GetSunrise */
    var set = this.clock.GetSunset(52.1, 4.3);          /* call: CLOCK.GetSunset */
    document.body.className = rise < set ? "day" : "night";
  },

  load: function (zip) {
    var self = this;
    var xhr = new XMLHttpRequest();
    xhr.open("GET", "forecast.xml?zip=" + zip, true);
    xhr.onreadystatechange = function () {
      if (xhr.readyState !== 4) { return; }
      if (xhr.status === 200 && xhr.responseXML) {
        self.parse(xhr.responseXML);
      } else {
        self.warn("No forecast. ");
      }
    };
    xhr.send();
  },

  parse: function (xml) {
    var list = xml.getElementsByTagName("day"), i;
    this.days = [];
    for (i = 0; i < list.length; i++) {
      this.days.push({
        name: list[i].getAttribute("name"),
        high: parseInt(list[i].getAttribute("high"), 10),
        low: parseInt(list[i].getAttribute("low"), 10),
        storm: list[i].getAttribute("storm") === "yes"
      });
    }
    this.draw();
  },

  draw: function () {
    var html = "", i, d, storm = null;
    for (i = 0; i < this.days.length; i++) {
      d = this.days[i];
      html += "<div class='day'><b>" + d.name + "</b><br>" + this.format(d.high) + " / " + this.format(d.low) + "</div>";
      storm = storm || (d.storm && d);
    }
    document.getElementById("days").innerHTML = html;
    if (storm) {
      this.warn("Storm on " + storm.name + " at " + this.clock.FormatTime(storm.high, "short"));    /* call: CLOCK.FormatTime */
    }
  },

  format: function (celsius) {
    return this.locale.ConvertTemperature(celsius, CONFIG.unit) + "\u00b0";     /* call: LOCALE.ConvertTemperature */
  },

  warn: function (text) {
    var p = document.getElementById("warning");
    p.hidden = false;
    p.textContent = text;
  },

  radar: function () {
    this.radarOn = !this.radarOn;
    if (!this.radarOn) {
      this.viewer.FadeOut(300);                         /* call: IMAGEVIEWER.FadeOut */
      this.viewer.Close();
      return;
    }
    this.viewer.Open();
    this.viewer.SetRegion(640, 100, 600, 500);          /* call: IMAGEVIEWER.SetRegion */
    for (var i = 0; i < 6; i++) {
      this.viewer.QueueImage(CONFIG.radar + i + ".jpg");      /* call: IMAGEVIEWER.QueueImage */
    }
    this.viewer.StartSlideshow(200);
    this.viewer.SetBlendMode("multiply");               /* call: IMAGEVIEWER.SetBlendMode */
  },

  key: function (code) {
    if (code === 403) {
      this.radar();
    } else if (code === 37 && this.radarOn) {
      this.viewer.PreviousImage();
    } else if (code === 39 && this.radarOn) {
      this.viewer.NextImage();
    } else if (code === 405) {
      map.ZoomIn();                                     /* decoy */
    } else if (code === 404) {
      map.FadeOut();                                    /* decoy */
    }
  }
};

// The small map is drawn on a canvas.
var map = {
  zoom: 1,
  ZoomIn: function () { this.zoom *= 2; return this.zoom; },
  FadeOut: function () { this.zoom = 1; }
};
