var slice = Array.prototype.slice;

// once(f): f is run the first time only.
function once(f) {
    var done = false, value;
    return function () {
        if (!done) {
            done = true;
            value = f.apply(this, arguments);
        }
        return value;
    };
}

function partial(f) {
    var first = slice.call(arguments, 1);
    return function () {
        return f.apply(this, first.concat(slice.call(arguments)));   /* call: HAPTIC.PulseTwice */
    };
}

function debounce(f, ms) {
    var timer = null;
    return function () {
        var self = this, args = arguments;
        clearTimeout(timer);
        timer = setTimeout(function () { f.apply(self, args); }, ms);
    };
}

// invoker("SetX")(plugin, 1) is plugin.SetX(1)
function invoker(name) {
    return function (target) {
        return target[name].apply(target, slice.call(arguments, 1));   /* call: MOTION.SetRange */
    };
}

var uncurryThis = Function.prototype.call.bind(Function.prototype.bind, Function.prototype.call);
