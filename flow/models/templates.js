// What libraries that fill in templates do, as far as objects flow through them. Nothing here is ever run.
var Mustache = (function () {
  function render(text) { return __tarvoRendered(text); }
  return { render: render, to_html: render, parse: function () {}, compile: function (text) { return function () { return render(text); }; } };
})();
var Hogan = { compile: function (text) { return { render: function () { return __tarvoRendered(text); } }; } };
var Handlebars = {
  compile: function (text) { return function () { return __tarvoRendered(text); }; },
  template: function (f) { return f; }, registerHelper: function (name, f) { f(); }, registerPartial: function () {},
  SafeString: function (text) { return text; }
};
var ejs = (function () {
  function render(text, data) { __tarvoTemplate("underscore", data, text); return __tarvoRendered(text); }
  return { render: render, compile: function (text) { return function (data) { return render(text, data); }; } };
})();
