"use strict";
/* One getter for each plug-in; it is looked up when it is first used. */
var services = (function () {
  var names = ["display", "audio", "hdmi"], found = {}, api = {};

  names.forEach(function (name) {
    Object.defineProperty(api, name, {
      enumerable: true,
      get: function () {
        if (!found[name]) {
          found[name] = document.getElementById("svc-" + name);
        }
        return found[name];
      }
    });
  });

  Object.defineProperties(api, {
    ready: { get: function () { return names.every(function (n) { return !!api[n]; }); } },
    count: { value: names.length }
  });
  return Object.freeze(api);
}());
