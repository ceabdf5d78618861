(function (root) {
    var MVC = root.MVC = {};

    MVC.Events = {
        on: function (name, fn, context) {
            var events = this._events || (this._events = {});
            (events[name] || (events[name] = [])).push({ fn: fn, context: context || this });
            return this;
        },
        trigger: function (name) {
            var args = [].slice.call(arguments, 1);
            ((this._events || {})[name] || []).forEach(function (one) { one.fn.apply(one.context, args); });
            return this;
        }
    };

    function assign(target, source) {
        Object.keys(source || {}).forEach(function (key) { target[key] = source[key]; });
        return target;
    }

    // Own inheritance: Model.extend({...}) makes a constructor that calls initialize.
    function extend(members) {
        var parent = this;
        var child = function () { return parent.apply(this, arguments); };
        child.prototype = assign(Object.create(parent.prototype), members);
        child.prototype.constructor = child;
        child.extend = extend;
        child.__super__ = parent.prototype;
        return child;
    }

    MVC.Model = function (attributes) {
        this.attributes = assign({}, attributes);
        if (this.initialize) { this.initialize.apply(this, arguments); }
    };
    assign(MVC.Model.prototype, MVC.Events);
    assign(MVC.Model.prototype, {
        get: function (key) { return this.attributes[key]; },
        set: function (key, value) {
            this.attributes[key] = value;
            return this.trigger("change:" + key, value, this).trigger("change", this);
        }
    });

    MVC.View = function (options) {
        assign(this, options);
        if (this.initialize) { this.initialize.apply(this, arguments); }
    };
    assign(MVC.View.prototype, MVC.Events);
    MVC.Model.extend = MVC.View.extend = extend;
}(this));
