(function(){function r(e,n,t){function o(i,f){if(!n[i]){if(!e[i]){var c="function"==typeof require&&require;if(!f&&c)return c(i,!0);if(u)return u(i,!0);var a=new Error("Cannot find module '"+i+"'");throw a.code="MODULE_NOT_FOUND",a}var p=n[i]={exports:{}};e[i][0].call(p.exports,function(r){var n=e[i][1][r];return o(n||r)},p,p.exports,r,e,n,t)}return n[i].exports}for(var u="function"==typeof require&&require,i=0;i<t.length;i++)o(t[i]);return o}return r})()({1:[function(require,module,exports){
'use strict';
// Bus of the heating: frames of five bytes over the serial port.
var port = require('./port');
var EventEmitter = require('events').EventEmitter;
var inherits = require('inherits');

function Bus() {
  EventEmitter.call(this);
  this.queue = [];
  this.timer = null;
}
inherits(Bus, EventEmitter);

Bus.prototype.start = function () {
  port.Open('COM1');
  port.SetBaudRate(9600);
  port.SetFlowControl('none');                                 /* call: SERIALPORT.SetFlowControl */
  this.timer = setInterval(this.poll.bind(this), 20);
  this.emit('started', port);
};

Bus.prototype.poll = function () {
  var waiting = port.GetPendingBytes();                        /* call: SERIALPORT.GetPendingBytes */
  if (waiting > 0) {
    this.emit('frame', port.ReadBytes(5));
  }
  var next = this.queue.shift();
  if (next) {
    port.WriteBytes(next);
  }
};

Bus.prototype.send = function (room, value) {
  this.queue.push([0x5a, room, value, 0, (room + value) & 255]);
};

Bus.prototype.stop = function () {
  clearInterval(this.timer);
  port.SendBreak(250);                                         /* call: SERIALPORT.SendBreak */
};

module.exports = Bus;

},{"./port":4,"events":5,"inherits":6}],2:[function(require,module,exports){
var Bus = require('./bus');
var rooms = require('./rooms');
var view = require('./view');
var saved = require('./saved');

var bus = new Bus();
var at = 0;

bus.on('started', function (port) {
  port.SetReadTimeout(50);                                     /* call: SERIALPORT.SetReadTimeout */
});
bus.on('frame', function (frame) {
  rooms.update(frame);
  view.draw(rooms.list, at);
});

exports.bus = bus;
exports.key = function (code) {
  var room = rooms.list[at];
  switch (code) {
    case 38: at = (at + rooms.list.length - 1) % rooms.list.length; break;
    case 40: at = (at + 1) % rooms.list.length; break;
    case 37: room.target -= 0.5; bus.send(at, room.target * 2); break;
    case 39: room.target += 0.5; bus.send(at, room.target * 2); break;
    case 403: saved.save(rooms.list); break;
    case 404: saved.plugin.ImportFromUsb('/usb/heating.json'); break;   /* call: STORAGE.ImportFromUsb */
    case 405: rooms.SendBreak(); break;                        /* decoy */
    case 413: bus.stop(); break;
    case 406: require('./port').ResetAdapter(); break;         /* call: SERIALPORT.ResetAdapter */
  }
  view.draw(rooms.list, at);
};
document.onkeydown = function (e) { exports.key(e.keyCode); };
bus.start();
view.draw(rooms.list, at);

},{"./bus":1,"./port":4,"./rooms":7,"./saved":8,"./view":9}],3:[function(require,module,exports){
module.exports={
  "rooms": ["Kitchen", "Bath", "Living room", "Study"],
  "note": "port.CalibrateSensor() is done by the installer"               /* decoy */
}
},{}],4:[function(require,module,exports){
module.exports = document.getElementById('serial');
module.exports.SetLineEnding = '\r\n';

},{}],5:[function(require,module,exports){
function EventEmitter() { this._events = this._events || {}; }
EventEmitter.EventEmitter = EventEmitter;
EventEmitter.prototype.on = function (type, listener) {
  (this._events[type] = this._events[type] || []).push(listener);
  return this;
};
EventEmitter.prototype.emit = function (type) {
  var handlers = this._events[type], args = [], i;
  if (!handlers) return false;
  for (i = 1; i < arguments.length; i++) args.push(arguments[i]);
  handlers = handlers.slice();
  for (i = 0; i < handlers.length; i++) handlers[i].apply(this, args);
  return true;
};
module.exports = EventEmitter;

},{}],6:[function(require,module,exports){
if (typeof Object.create === 'function') {
  module.exports = function inherits(ctor, superCtor) {
    ctor.super_ = superCtor;
    ctor.prototype = Object.create(superCtor.prototype, { constructor: { value: ctor, enumerable: false, writable: true, configurable: true } });
  };
} else {
  module.exports = function inherits(ctor, superCtor) {
    ctor.super_ = superCtor;
    var TempCtor = function () {};
    TempCtor.prototype = superCtor.prototype;
    ctor.prototype = new TempCtor();
  };
}

},{}],7:[function(require,module,exports){
var config = require('./config.json');

exports.list = config.rooms.map(function (name) {
  return { name: name, now: 20, target: 21 };
});
exports.update = function (frame) {
  if (frame && exports.list[frame[1]]) {
    exports.list[frame[1]].now = frame[2] / 2;
  }
};
exports.SendBreak = function () { exports.list.forEach(function (room) { room.target = 16; }); };

},{"./config.json":3}],8:[function(require,module,exports){
(function (global){(function (){
var store = global.document.getElementById('store');

function save(list) {
  store.SetItem('heating', JSON.stringify(list));
  store.CommitChanges();                                       /* call: STORAGE.CommitChanges */
}

module.exports = { save: save, plugin: store };
module.exports.plugin.SetNamespace('heating');                 /* call: STORAGE.SetNamespace */

}).call(this)}).call(this,typeof global !== "undefined" ? global : typeof self !== "undefined" ? self : typeof window !== "undefined" ? window : {})
},{}],9:[function(require,module,exports){
exports.draw = function (list, at) {
  document.getElementById('app').innerHTML = list.map(function (room, i) {
    return '<p' + (i === at ? ' class="on"' : '') + '>' + room.name + ': ' + room.now + ' / ' + room.target + '</p>';
  }).join('');
};

},{}]},{},[2]);
