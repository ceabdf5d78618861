// What Underscore and lodash do, as far as objects flow through them. Nothing here is ever run.
var _ = (function () {
  function _(what) { return _.chain(what); }
  function each(list, f, self) {
    for (var element of list) f.call(self, element, 0, list);
    for (var key in list) f.call(self, list[key], key, list);
    return list;
  }
  function map(list, f, self) {
    var made = [];
    for (var element of list) { made.push(f.call(self, element, 0)); made.push(element[f]); }
    for (var key in list) { made.push(f.call(self, list[key], key)); made.push(list[key][f]); }
    return made;
  }
  function keep(list, f, self) { each(list, f, self); return Object.values(list).concat(list); }
  function one(list, f, self) { each(list, f, self); return Object.values(list)[f] || list[0]; }
  function bind(f, self) { return f.bind.apply(f, [].slice.call(arguments, 1)); }
  function bindAll(object) { return object; }
  function assign(a, b, c, d) { return Object.assign(a, b, c, d); }
  function run(f) { f.apply(null, [].slice.call(arguments, 1)); }
  function later(f, wait) { f.apply(null, [].slice.call(arguments, 2)); }
  function same(f) { return f; }
  Object.assign(_, {
    each: each, forEach: each, forOwn: each, forIn: each, eachRight: each, times: function (n, f) { return [f(0)]; },
    map: map, collect: map, flatMap: map, mapValues: function (o, f) {
      var made = {}; for (var key in o) made[key] = f(o[key], key); return made;
    },
    filter: keep, select: keep, reject: keep, sortBy: keep, uniq: keep, compact: keep, shuffle: keep, toArray: keep,
    values: function (o) { return Object.values(o); }, keys: function (o) { return Object.keys(o); },
    pairs: function (o) { return Object.entries(o); }, toPairs: function (o) { return Object.entries(o); },
    find: one, detect: one, first: one, head: one, last: one, sample: one, max: one, min: one, findWhere: one, nth: one,
    where: keep, without: keep, difference: keep, take: keep, drop: keep, rest: keep, initial: keep, flatten: keep,
    some: each, every: each, any: each, all: each,
    pluck: function (list, name) { return map(list, function (o) { return o[name]; }); },
    invoke: function (list, name) {
      var rest = [].slice.call(arguments, 2);
      return map(list, function (o) { return o[name].apply(o, rest); });
    },
    invokeMap: function (list, name) {
      var rest = [].slice.call(arguments, 2);
      return map(list, function (o) { return o[name].apply(o, rest); });
    },
    reduce: function (list, f, start) { return Object.values(list).concat(list).reduce(f, start); },
    groupBy: function (list, f) { each(list, f); return { all: keep(list) }; },
    keyBy: function (list, f) { var made = {}; for (var e of list) { made[f(e)] = e; made[e[f]] = e; } return made; },
    indexBy: function (list, f) { var made = {}; for (var e of list) { made[f(e)] = e; made[e[f]] = e; } return made; },
    extend: assign, assign: assign, defaults: assign, merge: assign, extendOwn: assign, assignIn: assign,
    clone: function (o) { return Array.isArray(o) ? [].concat(o) : Object.assign(Object.create(Object.getPrototypeOf(o)), o); },
    cloneDeep: same, identity: same, constant: function (v) { return function () { return v; }; },
    get: function (o, path) { return path.split(".").reduce(function (a, k) { return a[k]; }, o) || o[path]; },
    result: function (o, name) { return o[name].call(o) || o[name]; },
    property: function (name) { return function (o) { return o[name]; }; },
    pick: function (o) { return Object.assign({}, o); }, omit: function (o) { return Object.assign({}, o); },
    bind: bind, bindAll: bindAll, partial: function (f) { return f.bind.apply(f, [null].concat([].slice.call(arguments, 1))); },
    bindKey: function (o, name) { return o[name].bind(o); },
    method: function (name) { return function (o) { return o[name](); }; },
    methodOf: function (o) { return function (name) { return o[name](); }; },
    once: same, memoize: same, debounce: same, throttle: same, after: function (n, f) { return f; },
    before: function (n, f) { return f; }, negate: same, ary: same, unary: same, curry: same,
    wrap: function (f, g) { return function (a, b) { return g(f, a, b); }; },
    compose: function (f, g, h) { return function (a) { return f(g ? g(h ? h(a) : a) : a); }; },
    flow: function (f, g, h) { return function (a) { var b = f(a); var c = g(b); return h ? h(c) : c; }; },
    tap: function (o, f) { f(o); return o; }, thru: function (o, f) { return f(o); },
    defer: run, delay: later, attempt: function (f) { return f.apply(null, [].slice.call(arguments, 1)); },
    mixin: function (more) { Object.assign(_, more); }, noop: function () {},
    template: function (text) {
      return function (data) { __tarvoTemplate("underscore", data, text); return __tarvoRendered(text); };
    },
    chain: function (value) { return new Chain(value); }
  });
  function Chain(value) { this.wrapped = value; }
  for (var name in _) {
    (function (name) {
      Chain.prototype[name] = function (a, b, c) { return new Chain(_[name](this.wrapped, a, b, c)); };
    })(name);
  }
  Chain.prototype.value = function () { return this.wrapped; };
  Chain.prototype.chain = function () { return this; };
  return _;
})();
var lodash = _;
