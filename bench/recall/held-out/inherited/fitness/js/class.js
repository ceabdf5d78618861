/* Simple inheritance with extend() and _super(). */
(function () {
  var initializing = false;
  this.Class = function () { };
  Class.extend = function extend(prop) {
    var _super = this.prototype;
    initializing = true;
    var prototype = new this();
    initializing = false;
    for (var name in prop) {
      prototype[name] = typeof prop[name] == "function" && typeof _super[name] == "function" ? (function (name, fn) {
        return function () {
          var tmp = this._super;
          this._super = _super[name];
          var ret = fn.apply(this, arguments);
          this._super = tmp;
          return ret;
        };
      })(name, prop[name]) : prop[name];
    }
    function Class() {
      if (!initializing && this.init) { this.init.apply(this, arguments); }
    }
    Class.prototype = prototype;
    Class.prototype.constructor = Class;
    Class.extend = extend;
    return Class;
  };
}).call(window);
