var Bus = {
    topics: {},
    subscribe: function (topic, fn, self) { (this.topics[topic] = this.topics[topic] || []).push({ fn: fn, self: self }); },
    publish: function (topic) {
        var args = Array.prototype.slice.call(arguments, 1);
        (this.topics[topic] || []).slice().forEach(function (s) { s.fn.apply(s.self || null, args); });
    }
};
function Emitter() { this._e = {}; }
Emitter.prototype.on = function (n, f) { (this._e[n] || (this._e[n] = [])).push(f); return this; };
Emitter.prototype.once = function (n, f) {
    var self = this;
    return this.on(n, function g() { self._e[n].splice(self._e[n].indexOf(g), 1); f.apply(self, arguments); });
};
Emitter.prototype.emit = function (n, a, b) { (this._e[n] || []).slice().forEach(function (f) { f(a, b); }); };
