var TV = TV || {};
TV.namespace = function (path) {
  var parts = path.split("."), o = TV, i;
  for (i = parts[0] === "TV" ? 1 : 0; i < parts.length; i++) {
    o[parts[i]] = o[parts[i]] || {};
    o = o[parts[i]];
  }
  return o;
};
TV.$ = function (id) { return document.getElementById(id); };
TV.each = function (list, fn) {
  for (var i = 0; i < list.length; i++) { fn(list[i], i); }
};
