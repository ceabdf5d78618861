// A small container: services are made once, when something first asks for them; what they need is given to them.
function Container() {
    this.factories = {};
    this.made = {};
}

Container.prototype.register = function (name, needs, factory) {
    this.factories[name] = { needs: needs, factory: factory };
    return this;
};

Container.prototype.get = function (name) {
    if (!Object.prototype.hasOwnProperty.call(this.made, name)) {
        var entry = this.factories[name];
        if (!entry) {
            throw new Error("Nothing is registered as " + name);
        }
        var needs = [];
        for (var i = 0; i < entry.needs.length; ++i) {
            needs.push(this.get(entry.needs[i]));
        }
        this.made[name] = entry.factory.apply(null, needs);
    }
    return this.made[name];
};

var app = new Container();
