var Container = function () {
    this.factories = {};
    this.instances = {};
};
Container.prototype.register = function (key, factory) {
    this.factories[key] = factory;
    return this;
};
Container.prototype.resolve = function (key) {
    if (!(key in this.instances)) {
        if (!this.factories[key]) { throw new Error('unknown: ' + key); }
        this.instances[key] = this.factories[key](this);
    }
    return this.instances[key];
};
// Makes a controller: what it needs stands in its $inject.
Container.prototype.make = function (Controller) {
    var self = this;
    var dependencies = (Controller.$inject || []).map(function (key) { return self.resolve(key); });
    return new (Function.prototype.bind.apply(Controller, [null].concat(dependencies)))();
};
