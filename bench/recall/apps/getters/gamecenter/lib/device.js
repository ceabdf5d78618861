// Everything of the platform is behind this object: elements are looked up when they are first wanted.
var device = {
  _cache: {},
  _find: function (id) {
    return this._cache[id] || (this._cache[id] = document.getElementById(id));
  },
  get gamepad() {
    return this._find('gp');
  },
  get haptic() {
    return this._find('hp');
  },
  log: []
};

Object.defineProperty(device, 'motion', {
  configurable: true,
  get: function () {
    var element = document.getElementById('mo');
    Object.defineProperty(device, 'motion', { value: element });
    return element;
  }
});

// A holder: what the other files may change.
function Holder(value) {
  var current = value;
  Object.defineProperties(this, {
    value: {
      get: function () { return current; },
      set: function (next) { current = next; this.changes++; }
    },
    changes: { value: 0, writable: true }
  });
}

// Calls on a pad are counted. What is not there becomes a call that does nothing.
function counted(target) {
  return new Proxy(target, {
    get: function (element, name) {
      counted.calls[name] = (counted.calls[name] || 0) + 1;
      var member = element[name];
      return typeof member === 'function' ? member.bind(element) : member;
    }
  });
}
counted.calls = {};
