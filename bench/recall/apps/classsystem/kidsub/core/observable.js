var Observable = {
  on: function (type, fn, scope) {
    this._handlers = this._handlers || {};
    (this._handlers[type] = this._handlers[type] || []).push({ fn: fn, scope: scope || this });
  },
  fire: function (type) {
    var handlers = (this._handlers || {})[type] || [];
    var args = Array.prototype.slice.call(arguments, 1);
    for (var i = 0; i < handlers.length; i++) {
      handlers[i].fn.apply(handlers[i].scope, args);
    }
  }
};

// For whatever has an element of a plug-in.
var HasPlugin = {
  plugin: function () {
    return this._plugin || (this._plugin = document.getElementById(this.pluginId));
  },
  ready: function () {
    return !!this.plugin();
  }
};
