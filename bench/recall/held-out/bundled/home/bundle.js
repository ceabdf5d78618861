(function(){function r(e,n,t){function o(i,f){if(!n[i]){if(!e[i]){var c="function"==typeof require&&require;if(!f&&c)return c(i,!0);if(u)return u(i,!0);var a=new Error("Cannot find module '"+i+"'");throw a.code="MODULE_NOT_FOUND",a}var p=n[i]={exports:{}};e[i][0].call(p.exports,function(r){var n=e[i][1][r];return o(n||r)},p,p.exports,r,e,n,t)}return n[i].exports}for(var u="function"==typeof require&&require,i=0;i<t.length;i++)o(t[i]);return o}return r})()({1:[function(require,module,exports){
'use strict';

// Lamps and sockets over the serial bridge.
var inherits = require('inherits');
var EventEmitter = require('events').EventEmitter;

function Bridge(port) {
  EventEmitter.call(this);
  this.port = port;
  this.queue = [];
}
inherits(Bridge, EventEmitter);

Bridge.prototype.open = function () {
  this.port.Open('/dev/ttyS1');
  this.port.SetBaudRate(9600);
  this.port.SetFlowControl('rts');                      /* call: SERIALPORT.SetFlowControl */
  this.emit('open', this.port);
};

Bridge.prototype.send = function (frame) {
  var self = this;
  this.queue.push(frame);
  if (this.queue.length > 1) return;
  setTimeout(function () {
    self.queue.splice(0).forEach(function (f) {
      self.port.WriteFrame(f);                          /* call: SERIALPORT.WriteFrame */
    });
    self.emit('sent', self.port);
  }, 0);
};

module.exports = Bridge;

},{"events":5,"inherits":4}],2:[function(require,module,exports){
'use strict';
var plugins = require('./plugins');
var format = require('util-format');

module.exports = function scan(callback) {
  var bt = plugins.get('bluetooth');
  bt.Open();
  bt.StartDiscovery();
  bt.SetDiscoveryFilter('lamp');                        /* call: BLUETOOTH.SetDiscoveryFilter */
  bt.OnDeviceFound(function (device) {                  /* call: BLUETOOTH.OnDeviceFound */
    bt.ReadRssi(device);                                /* call: BLUETOOTH.ReadRssi */
    callback(null, format('%s at %s', device, 'home'));
  });
};
module.exports.stop = function () {
  var bt = plugins.get('bluetooth');
  bt.StopDiscovery();
  bt.ForgetAll();                                       /* call: BLUETOOTH.ForgetAll */
};

},{"./plugins":3,"util-format":6}],3:[function(require,module,exports){
var found = {};
exports.get = function (name) {
  return found[name] || (found[name] = document.getElementById(name));
};
exports.all = function () {
  return Object.keys(found).map(function (name) { return found[name]; });
};

},{}],4:[function(require,module,exports){
module.exports = function inherits(ctor, superCtor) {
  ctor.super_ = superCtor;
  ctor.prototype = Object.create(superCtor.prototype, {
    constructor: { value: ctor, enumerable: false, writable: true, configurable: true }
  });
};

},{}],5:[function(require,module,exports){
function EventEmitter() { this._events = this._events || {}; }
module.exports = EventEmitter;
EventEmitter.EventEmitter = EventEmitter;
EventEmitter.prototype.on = function (type, listener) {
  if (!this._events) this._events = {};
  (this._events[type] = this._events[type] || []).push(listener);
  return this;
};
EventEmitter.prototype.once = function (type, listener) {
  function g() { this.removeListener(type, g); listener.apply(this, arguments); }
  return this.on(type, g);
};
EventEmitter.prototype.removeListener = function (type, listener) {
  var list = this._events[type] || [], i = list.indexOf(listener);
  if (i >= 0) this._events[type] = list.slice(0, i).concat(list.slice(i + 1));
  return this;
};
EventEmitter.prototype.emit = function (type) {
  var args = Array.prototype.slice.call(arguments, 1), list = (this._events || {})[type] || [];
  for (var i = 0; i < list.length; i++) list[i].apply(this, args);
  return list.length > 0;
};

},{}],6:[function(require,module,exports){
module.exports = function (text) {
  var args = arguments, i = 1;
  return text.replace(/%s/g, function () { return args[i++]; });
};

},{}],7:[function(require,module,exports){
'use strict';
var Bridge = require('./bridge'), scan = require('./scan'), plugins = require('./plugins');
var rooms = require('./rooms.json');
var bridge = new Bridge(plugins.get('serial'));
var remote = plugins.get('remote');
var log = { lines: [], WriteFrame: function (f) { this.lines.push(f); }, ReadRssi: function () { return -1; } };

bridge.once('open', function (port) { port.SetDtr(true); });              /* call: SERIALPORT.SetDtr */
bridge.on('sent', function (port) { port.DrainOutput(); });               /* call: SERIALPORT.DrainOutput */
bridge.open();

function draw() {
  document.getElementById('rooms').innerHTML = rooms.map(function (r) {
    return '<li>' + r.name + ': ' + (r.on ? 'on' : 'off') + '</li>';
  }).join('');
}

function toggle(i) {
  var room = rooms[i];
  if (!room) return;
  room.on = !room.on;
  bridge.send([room.address, room.on ? 1 : 0]);
  log.WriteFrame(room.address);                         /* decoy */
  remote.FlashLed(room.on ? 2 : 1);                     /* call: REMOTE.FlashLed */
  draw();
}

document.addEventListener('keydown', function (e) {
  if (e.keyCode >= 49 && e.keyCode <= 57) toggle(e.keyCode - 49);
  if (e.keyCode === 403) scan(function (err, text) { document.getElementById('log').textContent = text + log.ReadRssi(); });   /* decoy */
  if (e.keyCode === 404) scan.stop();
  if (e.keyCode === 405) remote.StartPairing('lamp');   /* call: REMOTE.StartPairing */
  if (e.keyCode === 461) plugins.all().forEach(function (p) { p.Suspend(); });    /* call: REMOTE.Suspend */
  // if (e.keyCode === 457) remote.FindMe();            /* decoy */
});
remote.Open();
remote.RegisterKey(403);
draw();

},{"./bridge":1,"./plugins":3,"./rooms.json":8,"./scan":2}],8:[function(require,module,exports){
module.exports=[
  { "name": "Kitchen", "address": 17, "on": false },
  { "name": "Hall", "address": 18, "on": false },
  { "name": "Garden", "address": 40, "on": true }
]

},{}]},{},[7]);
