// Classes with init, extend and _super.
var Class = function () { };
(function () {
    var making = false;
    Class.extend = function (members) {
        var base = this.prototype;
        making = true;
        var proto = new this();
        making = false;
        for (var name in members) {
            proto[name] = typeof members[name] == "function" && typeof base[name] == "function" ?
                (function (name, fn) {
                    return function () {
                        var keep = this._super;
                        this._super = base[name];
                        var result = fn.apply(this, arguments);
                        this._super = keep;
                        return result;
                    };
                })(name, members[name]) : members[name];
        }
        function Made() { if (!making && this.init) { this.init.apply(this, arguments); } }
        Made.prototype = proto;
        Made.prototype.constructor = Made;
        Made.extend = Class.extend;
        return Made;
    };
})();
function mixin(target) {
    for (var i = 1; i < arguments.length; i++) {
        for (var key in arguments[i]) { target[key] = arguments[i][key]; }
    }
    return target;
}
function inherits(child, parent) {
    var F = function () { };
    F.prototype = parent.prototype;
    child.prototype = new F();
    child.superclass = parent.prototype;
}
