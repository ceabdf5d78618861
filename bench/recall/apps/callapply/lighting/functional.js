// What we like of functional programming, for sets without a library.
var fn = {
    slice: Function.prototype.call.bind(Array.prototype.slice),

    curry: function (f) {
        var bound = fn.slice(arguments, 1);
        return function () {
            return f.apply(this, bound.concat(fn.slice(arguments)));
        };
    },

    compose: function () {
        var functions = fn.slice(arguments);
        return function (value) {
            return functions.reduceRight(function (v, f) { return f(v); }, value);
        };
    },

    once: function (f) {
        var done = false, result;
        return function () {
            if (!done) {
                done = true;
                result = f.apply(this, arguments);
            }
            return result;
        };
    },

    memoize: function (f) {
        var cache = {};
        return function (key) {
            return cache.hasOwnProperty(key) ? cache[key] : (cache[key] = f(key));
        };
    },

    invoke: function (object, method) {
        return object[method].apply(object, fn.slice(arguments, 2));    /* call: BLUETOOTH.SetMeshKey, BLUETOOTH.JoinMesh */
    },

    debounce: function (f, ms) {
        var timer;
        return function () {
            var self = this, args = arguments;
            clearTimeout(timer);
            timer = setTimeout(function () { f.apply(self, args); }, ms);
        };
    }
};
