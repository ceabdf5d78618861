// The plug-ins: one object for the whole application, made when it is first asked for.
var Plugins = (function () {
  var instance = null;
  function Plugins() {
    if (instance) { return instance; }
    instance = this;
    this.byName = {};
  }
  Plugins.prototype.get = function (name) {
    return this.byName[name] || (this.byName[name] = document.getElementById(name));
  };
  Plugins.getInstance = function () { return instance || new Plugins(); };
  return Plugins;
}());

var Pin = (function () {
  var attempts = 0;
  return {
    getInstance: function () { return this; },
    check: function (digits) {
      var security = Plugins.getInstance().get("security");
      attempts++;
      if (security.CheckPin(digits)) {
        security.ResetPinCounter();                     /* call: SECURITY.ResetPinCounter */
        attempts = 0;
        return true;
      }
      return false;
    },
    get attempts() { return attempts; },
    // Of this object, not of the plug-in
    LockOut: function (minutes) { this.until = Date.now() + minutes * 60000; }
  };
}());
