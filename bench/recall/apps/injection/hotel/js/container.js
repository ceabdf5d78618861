/**
 * A container of services.
 *
 *     container.register("name", ["dependency"], function (dependency) { return service; });
 *     container.run(["name"], function (name) { ... });
 */
function Container() {
    this.factories = {};
    this.instances = {};
}

Container.prototype.register = function (name, dependencies, factory) {
    this.factories[name] = { dependencies: dependencies, factory: factory };
    return this;
};

Container.prototype.value = function (name, value) {
    this.instances[name] = value;
    return this;
};

Container.prototype.get = function (name) {
    if (!(name in this.instances)) {
        var f = this.factories[name];
        if (!f) {
            throw new Error("Nothing is registered as " + name);
        }
        this.instances[name] = this.run(f.dependencies, f.factory);
    }
    return this.instances[name];
};

Container.prototype.run = function (dependencies, f) {
    return f.apply(null, dependencies.map(this.get, this));
};

// The names of the parameters are the dependencies.
Container.prototype.inject = function (f) {
    var list = /\(([^)]*)\)/.exec(String(f))[1];
    var names = list.split(",").map(function (s) { return s.trim(); }).filter(Boolean);
    return this.run(names, f);
};

var container = new Container();
