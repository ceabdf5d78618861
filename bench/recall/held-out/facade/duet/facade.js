/*
 * One face for all sound: the rest of the application knows no plug-in.
 */
var memoize = function (fn) {
  var cache = {};
  return function (key) {
    return Object.prototype.hasOwnProperty.call(cache, key) ? cache[key] : (cache[key] = fn.call(this, key));
  };
};

var plugin = memoize(function (id) { return document.getElementById(id); });

// Calls until the plug-in says yes, at most n times.
function attempt(id, method, args, n) {
  var object = plugin(id), result = 0;
  for (var i = 0; i < (n || 3) && !result; i++) {
    result = object[method].apply(object, args || []);  /* also: MICROPHONE.SelectMicrophone, AUDIO.OpenMixer, AUDIO.RouteInput, NETWORK.OpenPeerChannel */
  }
  return result;
}

// For methods that only newer sets have
function optional(id, method) {
  var rest = [].slice.call(arguments, 2), object = plugin(id);
  return object && typeof object[method] === "function" ? object[method].apply(object, rest) : undefined;     /* also: MICROPHONE.SetAutoTune, AUDIO.SetPan */
}

var Sound = {
  begin: function (singers) {
    plugin("mic").Open();
    attempt("audio", "OpenMixer", [singers], 5);        /* call: AUDIO.OpenMixer */
    for (var i = 0; i < singers; i++) {
      attempt("mic", "SelectMicrophone", [i]);              /* call: MICROPHONE.SelectMicrophone */
      attempt("audio", "RouteInput", [i, "main"]);      /* call: AUDIO.RouteInput */
    }
    plugin("mic").StartCapture();
  },
  place: function (singer, side) {
    optional("audio", "SetPan", singer, side);          /* call: AUDIO.SetPan */
  },
  tune: function (on) {
    optional("mic", "SetAutoTune", on);                 /* call: MICROPHONE.SetAutoTune */
    if (on) { plugin("mic").SetScale("minor"); }        /* call: MICROPHONE.SetScale */
  },
  level: function () { return plugin("mic").GetInputLevel(); },
  end: function () {
    plugin("mic").StopCapture();
    plugin("mic").Close();
    plugin("audio").CloseMixer();                       /* call: AUDIO.CloseMixer */
  },
  get raw() { return plugin("audio"); }
};

var Link = (function () {
  var open = false;
  return {
    connect: function (partner) {
      open = !!attempt("net", "OpenPeerChannel", [partner], 2);     /* call: NETWORK.OpenPeerChannel */
      return open;
    },
    send: function (data) {
      if (open) { plugin("net").SendDatagram(JSON.stringify(data)); }       /* call: NETWORK.SendDatagram */
    },
    latency: memoize(function (partner) { return plugin("net").MeasureLatency(partner); })    /* call: NETWORK.MeasureLatency */
  };
}());
