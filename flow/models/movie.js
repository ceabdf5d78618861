// What a player gives the script of a movie, and a movie its page. Nothing here is ever run.
// __tarvoMovies are the elements that show it.
var __tarvoMovie = (function () {
  for (var element of __tarvoMovies) {
    element.SetVariable = function (name, value) { window[name] = value; };
    element.GetVariable = function (name) { return window[name]; };
  }
  var ExternalInterface = {
    call: function (code) {
      var f = eval(code);
      return f.apply(null, [].slice.call(arguments, 1));
    },
    addCallback: function (name, self, f) {
      for (var element of __tarvoMovies) {
        element[name] = function () { return f.apply(self, arguments); };
        element[name] = function () { return self.apply(null, arguments); };
      }
    }
  };
  return {
    flash: { external: { ExternalInterface: ExternalInterface } },
    ExternalInterface: ExternalInterface,
    getURL: function (url) { document.createElement("a").setAttribute("href", url); },
    setInterval: function (o, f) { o.apply(null, [].slice.call(arguments, 2)); o[f].apply(o, [].slice.call(arguments, 3)); }
  };
})();
