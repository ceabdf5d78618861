/* declare("a.b.C", [bases], { ... }) puts a class into a namespace; hitch binds. */
var tv = {};
tv.namespace = function (path, value) {
  var parts = path.split('.'), at = window;
  for (var i = 0; i < parts.length - 1; i++) at = at[parts[i]] = at[parts[i]] || {};
  at[parts[parts.length - 1]] = value;
  return value;
};
tv.declare = function (name, bases, members) {
  var ctor = function () {
    for (var i = 0; i < bases.length; i++) {
      if (bases[i].prototype.constructorOnce) bases[i].prototype.constructorOnce.apply(this, arguments);
    }
    if (members.constructor !== Object) members.constructor.apply(this, arguments);
  };
  for (var i = 0; i < bases.length; i++) {
    for (var key in bases[i].prototype) ctor.prototype[key] = bases[i].prototype[key];
  }
  for (var own in members) if (own != 'constructor') ctor.prototype[own] = members[own];
  return tv.namespace(name, ctor);
};
tv.hitch = function (scope, method) {
  var fn = typeof method == 'string' ? scope[method] : method;
  var pre = Array.prototype.slice.call(arguments, 2);
  return function () {
    return fn.apply(scope, pre.concat(Array.prototype.slice.call(arguments)));   /* call: KEYBOARD.ShakeKeys */
  };
};
tv.connect = function (node, event, scope, method) {
  node.addEventListener(event.replace(/^on/, ''), tv.hitch(scope, method), false);
};
