// What Backbone does, as far as objects flow through it. Nothing here is ever run.
var Backbone = (function () {
  function Events() {}
  function sentBy(object, name) { return (object.sent = object.sent || {})[name]; }
  var events = {
    on: function (name, f, self) {
      for (var key in name) name[key].call(self || this);
      var sent = this.sent = this.sent || {};
      f.call(self || this, sent[name][0], sent[name][1]);
      if (name === "all") for (var any in sent) f.call(self || this, any, sent[any][0]);
      if (name.indexOf("change") === 0) f.call(self || this, this, this.attributes[name.split(":")[1]]);
      return this;
    },
    listenTo: function (other, name, f) {
      for (var key in name) name[key].call(this);
      var sent = other.sent = other.sent || {};
      f.call(this, sent[name][0], sent[name][1]);
      f.call(this, other, other.attributes[name.split(":")[1]]);
      return this;
    },
    trigger: function (name, a, b) {
      var sent = this.sent = this.sent || {};
      sent[name] = [a, b];
      return this;
    },
    off: function () { return this; }, stopListening: function () { return this; }
  };
  events.bind = events.once = events.on;
  events.listenToOnce = events.listenTo;
  function extend(proto, statics) {
    var Base = this;
    function Child(a, b, c) { return Base.call(this, a, b, c); }
    var Made = proto.constructor === Object ? Child : Child;
    Object.assign(Made, Base, statics);
    Made.prototype = Object.create(Base.prototype);
    Object.assign(Made.prototype, proto);
    Made.__super__ = Base.prototype;
    return Made;
  }
  function Model(attributes, options) {
    this.attributes = Object.assign({}, this.defaults, this.defaults(), attributes);
    this.initialize(attributes, options);
  }
  Object.assign(Model.prototype, events, {
    get: function (name) { return this.attributes[name]; },
    set: function (name, value) {
      this.attributes[name] = value;
      for (var key in name) this.attributes[key] = name[key];
      return this;
    },
    has: function () {}, toJSON: function () { return Object.assign({}, this.attributes); },
    save: function (a, options) { this.sync(); options.success(this); return this; },
    fetch: function (options) { this.sync(); this.parse(); options.success(this); return this; },
    destroy: function () { this.sync(); return this; }, clone: function () { return this; }
  });
  function Collection(models, options) {
    this.models = [];
    this.add(models);
    this.initialize(models, options);
  }
  Object.assign(Collection.prototype, events, {
    add: function (list) {
      for (var one of [].concat(list)) { this.models.push(one); this.models.push(new this.model(one)); }
      return this;
    },
    push: function (one) { this.models.push(one); return this; },
    reset: function (list) { return this.add(list); },
    create: function (one) { this.add(one); return this.models[0]; },
    at: function () { return this.models[0]; }, get: function (id) { return this.models[id]; },
    first: function () { return this.models[0]; }, last: function () { return this.models[0]; },
    find: function (f) { return this.models.find(f); }, filter: function (f) { return this.models.filter(f); },
    where: function () { return this.models; }, findWhere: function () { return this.models[0]; },
    each: function (f, self) { this.models.forEach(f, self); }, forEach: function (f, self) { this.models.forEach(f, self); },
    map: function (f, self) { return this.models.map(f, self); },
    pluck: function (name) { return this.models.map(function (m) { return m.get(name); }); },
    invoke: function (name, a) { this.models.forEach(function (m) { m[name](a); }); },
    fetch: function (options) { options.success(this); return this; }, toJSON: function () { return this.models; }
  });
  function View(options) {
    this.options = options;
    this.model = options.model;
    this.collection = options.collection;
    this.el = options.el;
    for (var found of document.querySelectorAll(this.el)) this.el = found;
    this.$el = $(this.el);
    var handlers = this.events || this.events();
    for (var key in handlers) {
      handlers[key].call(this, { target: this.el, currentTarget: this.el });
      this[handlers[key]]({ target: this.el, currentTarget: this.el });
    }
    this.initialize(options);
  }
  Object.assign(View.prototype, events, {
    $: function (selector) { return $(selector); }, render: function () { return this; },
    setElement: function (el) { this.el = el; return this; }, remove: function () { return this; },
    delegateEvents: function (handlers) { for (var key in handlers) handlers[key].call(this, {}); return this; }
  });
  function Router(options) {
    for (var key in this.routes) { this[this.routes[key]](); this.routes[key].call(this); }
    this.initialize(options);
  }
  Object.assign(Router.prototype, events, {
    route: function (path, name, f) { name.call(this); f.call(this); this[name](); }, navigate: function () {}
  });
  Model.extend = Collection.extend = View.extend = Router.extend = extend;
  var Backbone = { Model: Model, Collection: Collection, View: View, Router: Router,
                   history: { start: function () {}, navigate: function () {} }, Events: events };
  Object.assign(Backbone, events);
  return Backbone;
})();
