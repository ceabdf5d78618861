var define, require;
(function () {
    var registry = {}, loaded = {};

    function resolve(base, name) {
        if (name.charAt(0) !== ".") { return name; }
        var parts = base.split("/").slice(0, -1).concat(name.split("/")), out = [];
        parts.forEach(function (p) {
            if (p === "..") { out.pop(); } else if (p !== ".") { out.push(p); }
        });
        return out.join("/");
    }

    function load(name) {
        if (loaded.hasOwnProperty(name)) { return loaded[name]; }
        var entry = registry[name];
        if (!entry) { throw new Error("No module " + name); }
        var exports = loaded[name] = {};
        var args = entry.deps.map(function (dep) {
            return dep === "exports" ? exports : load(resolve(name, dep));
        });
        var result = typeof entry.factory === "function" ? entry.factory.apply(null, args) : entry.factory;
        if (result !== undefined) { loaded[name] = result; }
        return loaded[name];
    }

    define = function (name, deps, factory) {
        if (!factory) { factory = deps; deps = []; }
        registry[name] = { deps: deps, factory: factory };
    };
    define.amd = {};

    require = function (deps, callback) {
        callback.apply(null, deps.map(load));
    };
}());
