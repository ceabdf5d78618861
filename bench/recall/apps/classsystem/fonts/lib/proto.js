/* The parts of a well-known library that we use, taken over in 2010: $, $A, Class.create, bind, each, invoke. */
function $(id) {
  return typeof id == 'string' ? document.getElementById(id) : id;
}
function $A(list) {
  var out = [];
  for (var i = 0; i < list.length; i++) out.push(list[i]);
  return out;
}
Object.extend = function (target, source) {
  for (var key in source) target[key] = source[key];
  return target;
};
var Enumerable = {
  each: function (fn, context) {
    for (var i = 0; i < this.length; i++) fn.call(context, this[i], i);
    return this;
  },
  invoke: function (method) {
    var args = $A(arguments).slice(1);
    return this.map(function (one) { return one[method].apply(one, args); });   /* call: FONT.ReleaseGlyphs */
  },
  pluck: function (key) { return this.map(function (one) { return one[key]; }); }
};
['each', 'invoke', 'pluck'].forEach(function (name) {
  Object.defineProperty(Array.prototype, name, { value: Enumerable[name] });
});
var Class = {
  create: function () {
    var parent = null, properties = $A(arguments);
    if (typeof properties[0] == 'function') parent = properties.shift();
    function klass() { this.initialize.apply(this, arguments); }
    Object.extend(klass, Class.Methods);
    klass.superclass = parent;
    if (parent) {
      var subclass = function () {};
      subclass.prototype = parent.prototype;
      klass.prototype = new subclass();
    }
    for (var i = 0; i < properties.length; i++) klass.addMethods(properties[i]);
    if (!klass.prototype.initialize) klass.prototype.initialize = function () {};
    klass.prototype.constructor = klass;
    return klass;
  },
  Methods: {
    addMethods: function (source) {
      var ancestor = this.superclass && this.superclass.prototype;
      for (var property in source) {
        var value = source[property];
        if (ancestor && typeof value == 'function' && /^function\s*\w*\s*\(\s*\$super/.test(value.toString())) {
          value = (function (name, method) {
            return function () {
              var self = this;
              var up = function () { return ancestor[name].apply(self, arguments); };
              return method.apply(self, [up].concat($A(arguments)));
            };
          })(property, value);
        }
        this.prototype[property] = value;
      }
      return this;
    }
  }
};
