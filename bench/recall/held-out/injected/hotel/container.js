/**
 * Container: factories name what they need as parameters, e.g. function (power, config) { ... }.
 */
function Container() {
  this.factories = {};
  this.instances = {};
}
Container.prototype.register = function (name, factory) {
  this.factories[name] = factory;
  return this;
};
Container.prototype.value = function (name, value) {
  this.instances[name] = value;
  return this;
};
Container.prototype.get = function (name) {
  if (!(name in this.instances)) {
    if (!this.factories[name]) { throw new Error("Unknown: " + name); }
    this.instances[name] = this.inject(this.factories[name]);
  }
  return this.instances[name];
};
Container.prototype.inject = function (fn, self) {
  var text = fn.toString(), self_ = self || null, container = this;
  var list = fn.$inject || text.slice(text.indexOf("(") + 1, text.indexOf(")")).split(",").map(function (s) {
    return s.replace(/\/\*.*?\*\//g, "").trim();
  }).filter(Boolean);
  return fn.apply(self_, list.map(function (n) { return container.get(n); }));
};
