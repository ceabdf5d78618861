// tv.declare("a.b.C", [Base, Mixin...], { constructor, members }): classes in namespaces, with traits and this.inherited.
var tv = {
  declare: function (name, bases, body) {
    var ctor = function () {
      var args = arguments;
      bases.forEach(function (b) { b.apply(this, args); }, this);
      if (body.hasOwnProperty("constructor")) body.constructor.apply(this, arguments);
    };
    bases.forEach(function (b) { for (var k in b.prototype) ctor.prototype[k] = b.prototype[k]; });
    Object.keys(body).forEach(function (k) {
      if (k === "constructor") return;
      var old = ctor.prototype[k], v = body[k];
      ctor.prototype[k] = typeof v !== "function" ? v : function () {
        var keep = this.inherited;
        this.inherited = old || function () {};
        try { return v.apply(this, arguments); } finally { this.inherited = keep; }
      };
    });
    var parts = name.split("."), last = parts.pop();
    parts.reduce(function (o, p) { return o[p] = o[p] || {}; }, window)[last] = ctor;
    return ctor;
  },
  trait: function (t) { return function (proto) { Object.keys(t).forEach(function (k) { proto[k] = t[k]; }); return proto; }; }
};
