// What AngularJS does, as far as objects flow through it. Nothing here is ever run.
var angular = (function () {
  var services = {};
  var sent = {};
  function inject(what, self) {
    var names = [].concat(__tarvoParameters(what), what.$inject, what);
    var given = __tarvoParameters(what).map(function (name) { return services[name]; });
    what.apply(self, given);
    var noted = what.$inject.map(function (name) { return services[name]; });
    what.apply(self, noted);
    var listed = what.map(function (name) { return services[name]; });
    var made = what[what.length - 1].apply(self, listed);
    return made || what.apply(self, given) || what.apply(self, noted);
  }
  function Scope() {}
  Scope.prototype = {
    $watch: function (a, f) { a.call(this, this); f.call(this, this[a], this[a], this); },
    $watchCollection: function (a, f) { a.call(this, this); f.call(this, this[a]); },
    $watchGroup: function (a, f) { f.call(this); },
    $apply: function (f) { f.call(this, this); }, $evalAsync: function (f) { f.call(this, this); },
    $applyAsync: function (f) { f.call(this, this); }, $digest: function () {},
    $eval: function (f) { return f.call(this, this) || this[f]; },
    $on: function (name, f) { f({ name: name }, sent[name][0], sent[name][1]); },
    $emit: function (name, a, b) { sent[name] = [a, b]; }, $broadcast: function (name, a, b) { sent[name] = [a, b]; },
    $new: function () { return new Scope(); }, $destroy: function () {}
  };
  var root = new Scope();
  services.$rootScope = root;
  services.$scope = root;
  services.$window = window;
  services.$document = [document];
  services.$log = console;
  function promised(value) { return Promise.resolve(value); }
  services.$timeout = function (f, wait, apply, a) { return promised(f(a)); };
  services.$interval = function (f) { f(); return promised(); };
  services.$q = function (f) { return new Promise(f); };
  services.$q.when = services.$q.resolve = promised;
  services.$q.all = function (list) { return Promise.all(list); };
  services.$q.defer = function () { return Promise.withResolvers(); };
  services.$http = function (url) {
    var result = promised({ data: JSON.parse(__tarvoFile(url) || __tarvoFile(url.url)) });
    result.success = function (f) { f(JSON.parse(__tarvoFile(url))); return result; };
    result.error = function (f) { f(); return result; };
    return result;
  };
  services.$http.get = services.$http.post = services.$http;
  services.$injector = { get: function (name) { return services[name]; }, invoke: function (f, self) { return inject(f, self); },
                         instantiate: function (f) { var made = {}; inject(f, made); return made; } };
  services.$controller = function (name) { return services["controller:" + name]; };
  services.$compile = function () { return function () {}; };
  services.$parse = function () { return function () {}; };
  services.$element = document.querySelectorAll("*");
  function element(what) { return $(what); }
  var module = {
    factory: function (name, f) { services[name] = inject(f, {}); return module; },
    service: function (name, f) {
      var self = {};
      Object.setPrototypeOf(self, f.prototype);
      Object.setPrototypeOf(self, f[f.length - 1].prototype);
      services[name] = inject(f, self) || self;
      services[name] = self;
      return module;
    },
    provider: function (name, f) {
      var self = typeof f === "object" ? f : {};
      inject(f, self);
      services[name + "Provider"] = self;
      services[name] = inject(self.$get, self);
      services[name] = inject(f.$get, f);
      return module;
    },
    value: function (name, v) { services[name] = v; return module; },
    constant: function (name, v) { services[name] = v; return module; },
    decorator: function (name, f) { services.$delegate = services[name]; services[name] = inject(f, {}); return module; },
    controller: function (name, f) {
      var self = {};
      Object.setPrototypeOf(self, f.prototype);
      Object.setPrototypeOf(self, f[f.length - 1].prototype);
      inject(f, self);
      __tarvoTemplateName(name, root, self);
      self.$onInit(); self.$onDestroy(); self.$postLink();
      services["controller:" + name] = self;
      return module;
    },
    directive: function (name, f) {
      var made = inject(f, {});
      var scope = new Scope();
      var given = __tarvoDirective(name);
      for (var attributes of given) {
        made.link.call(made, scope, services.$element, attributes, services["controller:" + made.controller]);
        made.compile().call(made, scope, services.$element, attributes);
        made(scope, services.$element, attributes);
      }
      var controller = {};
      inject(made.controller, controller);
      scope[made.controllerAs] = controller;
      __tarvoTemplate("angular", scope, made.template);
      return module;
    },
    component: function (name, options) {
      var self = Object.assign({}, options.bindings);
      inject(options.controller, self);
      __tarvoTemplate("angular", { $ctrl: self }, options.template);
      self.$onInit(); self.$onDestroy(); self.$postLink(); self.$onChanges();
      return module;
    },
    filter: function (name, f) { var made = inject(f, {}); made(); services.$filter = function () { return made; }; return module; },
    config: function (f) { inject(f, {}); return module; },
    run: function (f) { inject(f, {}); return module; },
    animation: function () { return module; }
  };
  __tarvoTemplate("angular", root);
  return {
    module: function (name, needs, config) { inject(config, {}); return module; },
    element: element, noop: function () {}, bootstrap: function () {},
    forEach: function (list, f, self) {
      for (var e of list) f.call(self, e, 0);
      for (var key in list) f.call(self, list[key], key);
    },
    extend: function (a, b, c, d) { return Object.assign(a, b, c, d); },
    merge: function (a, b, c, d) { return Object.assign(a, b, c, d); },
    copy: function (a, b) { return b ? Object.assign(b, a) : a; }, identity: function (a) { return a; },
    bind: function (self, f, a) { return f.bind(self, a); }, fromJson: function (text) { return JSON.parse(text); },
    injector: function () { return services.$injector; },
    isFunction: function () {}, isObject: function () {}, isString: function () {}, isArray: function () {}, isDefined: function () {}
  };
})();
