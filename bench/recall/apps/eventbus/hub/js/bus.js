// One bus for all. A channel is "area:event"; what is sent on an area is described in README.txt.
var Bus = {
    _subscribers: {},
    on: function (channel, fn, context) {
        (this._subscribers[channel] = this._subscribers[channel] || []).push({ fn: fn, context: context });
        return this;
    },
    emit: function (channel) {
        var args = Array.prototype.slice.call(arguments, 1);
        (this._subscribers[channel] || []).forEach(function (one) {
            one.fn.apply(one.context || null, args);
        });
    }
};
