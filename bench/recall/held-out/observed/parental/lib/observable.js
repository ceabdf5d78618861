function Observable() { this.observers = []; }
Observable.prototype.observe = function (observer) {
  this.observers.push(observer);
  return this;
};
Observable.prototype.notify = function (what, value) {
  this.observers.forEach(function (o) {
    var method = "on" + what.charAt(0).toUpperCase() + what.substr(1);
    if (typeof o === "function") { o(what, value); } else if (o[method]) { o[method](value); }
  });
};
Observable.inherit = function (child) {
  child.prototype = Object.create(Observable.prototype, { constructor: { value: child } });
  return child;
};
