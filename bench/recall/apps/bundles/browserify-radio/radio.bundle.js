(function(){function r(e,n,t){function o(i,f){if(!n[i]){if(!e[i]){var c="function"==typeof require&&require;if(!f&&c)return c(i,!0);if(u)return u(i,!0);var a=new Error("Cannot find module '"+i+"'");throw a.code="MODULE_NOT_FOUND",a}var p=n[i]={exports:{}};e[i][0].call(p.exports,function(r){var n=e[i][1][r];return o(n||r)},p,p.exports,r,e,n,t)}return n[i].exports}for(var u="function"==typeof require&&require,i=0;i<t.length;i++)o(t[i]);return o}return r})()({1:[function(require,module,exports){
'use strict';

var EventEmitter = require('events').EventEmitter;
var inherits = require('inherits');
var plugins = require('./plugins');

function Radio(stations) {
    EventEmitter.call(this);
    this.stations = stations;
    this.index = -1;
    this._player = plugins('player');
}

inherits(Radio, EventEmitter);

Radio.prototype.tune = function (index) {
    var station = this.stations[index];
    this.index = index;
    this._player.Open(station.url);
    this._player.SetIcyMetadata(true);   /* call: PLAYER.SetIcyMetadata */
    this._player.Play();
    this.emit('tuned', station);
    return this;
};

Radio.prototype.next = function () {
    return this.tune((this.index + 1) % this.stations.length);
};

Radio.prototype.title = function (callback) {
    this._player.ReadStreamTitle(callback);   /* call: PLAYER.ReadStreamTitle */
};

Radio.prototype.off = function () {
    this._player.Stop();
    this.emit('off');
};

module.exports = Radio;

},{"./plugins":4,"events":5,"inherits":6}],2:[function(require,module,exports){
module.exports = [
    { name: 'Coast FM', url: 'http://radio.example/coast' },
    { name: 'Night Talk', url: 'http://radio.example/talk' },
    { name: 'Folk', url: 'http://radio.example/folk' }
];

},{}],3:[function(require,module,exports){
'use strict';

var Radio = require('./Radio');
var stations = require('./stations');
var audio = require('./plugins')('audio');
var quality = require('./quality');
var dial = document.getElementById('dial');

var radio = new Radio(stations);

radio.on('tuned', function (station) {
    dial.innerHTML = station.name;
    radio.title(function (title) {
        dial.title = title;
    });
    audio.SetVoiceEnhance(/Talk/.test(station.name));   /* call: AUDIO.SetVoiceEnhance */
    quality.watch(station);
});

radio.on('off', function () {
    dial.innerHTML = '';
    audio.SetStandbyMute(true);   /* call: AUDIO.SetStandbyMute */
});

radio.once('tuned', audio.EnableLoudnessNormalization.bind(audio, -23));   /* call: AUDIO.EnableLoudnessNormalization */

document.addEventListener('keydown', function (e) {
    if (e.keyCode === 39) {
        radio.next();
    } else if (e.keyCode === 413) {
        radio.off();
    } else if (e.keyCode === 38) {
        audio.VolumeUp();
    } else if (e.keyCode === 40) {
        audio.VolumeDown();
    } else if (e.keyCode === 404) {
        radio.SetIcyMetadata && radio.SetIcyMetadata(false);   /* decoy */
    }
});

radio.tune(0);

},{"./Radio":1,"./plugins":4,"./quality":7,"./stations":2}],4:[function(require,module,exports){
var cache = {};

module.exports = function (name) {
    return cache[name] || (cache[name] = document.getElementById('plg-' + name));
};

},{}],5:[function(require,module,exports){
function EventEmitter() {
    this._events = {};
}
EventEmitter.prototype.on = function (type, listener) {
    this._events = this._events || {};
    (this._events[type] = this._events[type] || []).push(listener);
    return this;
};
EventEmitter.prototype.once = function (type, listener) {
    var self = this, fired = false;
    function g() {
        if (!fired) {
            fired = true;
            listener.apply(self, arguments);   /* also: AUDIO.EnableLoudnessNormalization */
        }
    }
    g.listener = listener;
    return this.on(type, g);
};
EventEmitter.prototype.emit = function (type) {
    var args = Array.prototype.slice.call(arguments, 1), handlers = (this._events || {})[type] || [], i;
    for (i = 0; i < handlers.length; i++) {
        handlers[i].apply(this, args);
    }
    return handlers.length > 0;
};
exports.EventEmitter = EventEmitter;

},{}],6:[function(require,module,exports){
module.exports = function inherits(ctor, superCtor) {
    ctor.super_ = superCtor;
    ctor.prototype = Object.create(superCtor.prototype, {
        constructor: { value: ctor, enumerable: false, writable: true, configurable: true }
    });
};

},{}],7:[function(require,module,exports){
var bandwidth = require('./plugins')('bandwidth');
var measured = 0;

exports.watch = function (station) {
    bandwidth.StartMeasurement();
    bandwidth.TagFlow(station.name);   /* call: BANDWIDTH.TagFlow */
    measured = bandwidth.GetDownlinkRate();
    if (measured < 64) {
        exports.lower();
    }
};

exports.lower = function () {
    var player = require('./plugins')('player');
    player.PreferLowBitrate(true);   /* call: PLAYER.PreferLowBitrate */
    bandwidth.ReserveRate(64);   /* call: BANDWIDTH.ReserveRate */
};

},{"./plugins":4}]},{},[3]);
