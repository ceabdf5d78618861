// Services ask for what they need by the names of their parameters or by a list.
var Container = (function () {
    var factories = {}, made = {};
    function names(fn) {
        if (fn.$needs) { return fn.$needs; }
        var m = /\(([^)]*)\)/.exec(fn.toString());
        return m[1].split(",").map(function (s) { return s.trim(); }).filter(Boolean);
    }
    return {
        register: function (name, factory) { factories[name] = factory; return this; },
        value: function (name, v) { made[name] = v; return this; },
        get: function (name) {
            if (!(name in made)) { made[name] = this.call(factories[name]); }
            return made[name];
        },
        call: function (fn) {
            var self = this;
            return fn.apply(null, names(fn).map(function (n) { return self.get(n); }));
        }
    };
})();
