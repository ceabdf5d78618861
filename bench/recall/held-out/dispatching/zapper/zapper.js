(function () {
  var mode = "tv", digits = "", digitTimer = null;
  var chan = document.getElementById("chan"), snd = document.getElementById("snd");

  var actions = {
    teletext: function () {
      mode = "text";
      with_("ttx", function (t) {
        t.Open();
        t.ShowPage(100);
        t.SetCharacterSet("latin1");                    /* call: TELETEXT.SetCharacterSet */
      });
    },
    leaveText: function () {
      mode = "tv";
      with_("ttx", function (t) { t.Close(); });
    },
    red: fastext.bind(null, 0),
    green: fastext.bind(null, 1),
    banner: function () {
      var osd = document.getElementById("osd");
      osd.innerHTML = "Channel " + chan.GetChannel() + " " + chan.GetChannelLogo();      /* call: CHANNEL.GetChannelLogo */
      setTimeout(function () { osd.innerHTML = ""; }, 3000);
    }
  };

  function with_(id, fn) { fn(document.getElementById(id)); }

  function fastext(n) {
    with_("ttx", function (t) { t.FollowLink(n); });    /* call: TELETEXT.FollowLink */
  }

  function perform(entry) {
    if (typeof entry === "string") {
      actions[entry]();
    } else if (entry) {
      var plugin = document.getElementById(entry[0]);
      plugin[entry[1]].apply(plugin, entry.slice(2));   /* also: CHANNEL.SwapChannels, AUDIO.CycleLanguage, AUDIO.SetNightMode, CHANNEL.ReturnToPrevious, TELETEXT.HoldPage, TELETEXT.RevealHidden */
    }
  }

  function digit(d) {
    digits += d;
    document.getElementById("number").innerHTML = digits;
    clearTimeout(digitTimer);
    digitTimer = setTimeout(tune, 80);
  }

  function tune() {
    var n = parseInt(digits, 10);
    digits = "";
    if (mode === "tv") {
      chan.SetChannel(n);
      chan.TuneDirect(n, "quick");                      /* call: CHANNEL.TuneDirect */
      recent.SwapChannels(n);                           /* decoy */
    }
  }

  // The list of recent channels.
  var recent = {
    list: [],
    SwapChannels: function (n) { this.list.unshift(n); this.list.length = Math.min(5, this.list.length); },
    TuneDirect: function () { return this.list[0]; }
  };

  document.onkeydown = function (e) {
    if (e.keyCode >= 48 && e.keyCode <= 57) {
      digit(e.keyCode - 48);
    } else {
      perform(KEYMAP[mode][e.keyCode]);
    }
    recent.TuneDirect();                                /* decoy */
  };

  var onVolume = { low: "DuckAudio", high: "LimitPeak" };     /* call: AUDIO.DuckAudio, AUDIO.LimitPeak */
  window.onoffline = function () { snd[onVolume.low](10); };          /* also: AUDIO.DuckAudio */
  window.ononline = function () { snd[onVolume["high"]](90); };      /* also: AUDIO.LimitPeak */
}());
