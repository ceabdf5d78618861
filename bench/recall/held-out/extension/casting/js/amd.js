// define and require for named modules
(function (global) {
  var definitions = {}, modules = {};
  global.define = function (name, dependencies, factory) {
    definitions[name] = { dependencies: dependencies, factory: factory };
  };
  function load(name) {
    if (name === "exports") { return {}; }
    if (!(name in modules)) {
      var definition = definitions[name], exports = {};
      if (!definition) { throw new Error("No module " + name); }
      var made = definition.factory.apply(null, definition.dependencies.map(function (d) {
        return d === "exports" ? exports : load(d);
      }));
      modules[name] = made === undefined ? exports : made;
    }
    return modules[name];
  }
  global.require = function (names, callback) {
    callback.apply(null, names.map(load));
  };
  define.amd = {};
}(this));
