/******/ (() => { // webpackBootstrap
/******/ 	"use strict";
/******/ 	var __webpack_modules__ = ({

/***/ "./src/device.js":
/***/ ((__unused_webpack_module, __webpack_exports__, __webpack_require__) => {

__webpack_require__.r(__webpack_exports__);
/* harmony export */ __webpack_require__.d(__webpack_exports__, {
/* harmony export */   "broadcast": () => (/* binding */ broadcast),
/* harmony export */   "audio": () => (/* binding */ audio),
/* harmony export */   "default": () => (__WEBPACK_DEFAULT_EXPORT__)
/* harmony export */ });
const broadcast = document.getElementById('broadcast');
const audio = document.getElementById('audio');
/* harmony default export */ const __WEBPACK_DEFAULT_EXPORT__ = ({ broadcast, audio });

/***/ }),

/***/ "./src/stations.js":
/***/ ((module) => {

// Stations of the internet. They are played by the page's own little engine.
class Stream {
  constructor(url) { this.url = url; this.state = 'idle'; }
  Tune() { this.state = 'tuned'; return this; }
  Retune(url) { this.url = url; return this.Tune(); }                       /* decoy */
  SetPreroll(ms) { this.preroll = ms; }
  ReadMetadata() { return { title: this.url }; }
}
module.exports = {
  Stream,
  streams: ['http://one.example/', 'http://two.example/'].map((url) => new Stream(url)),
};

/***/ }),

/***/ "./src/player.js":
/***/ ((__unused_webpack_module, __webpack_exports__, __webpack_require__) => {

__webpack_require__.r(__webpack_exports__);
/* harmony export */ __webpack_require__.d(__webpack_exports__, {
/* harmony export */   "Player": () => (/* binding */ Player),
/* harmony export */   "Air": () => (/* binding */ Air)
/* harmony export */ });
/* harmony import */ var _device_js__WEBPACK_IMPORTED_MODULE_0__ = __webpack_require__("./src/device.js");
/* harmony import */ var _mixer_js__WEBPACK_IMPORTED_MODULE_1__ = __webpack_require__("./src/mixer.js");

/** Stations from the air: the same interface as a stream has, by the plug-in. */
class Air {
  constructor(service) { this.service = service; }
  Tune() {
    _device_js__WEBPACK_IMPORTED_MODULE_0__.broadcast.SelectService(this.service);
    _device_js__WEBPACK_IMPORTED_MODULE_0__.broadcast.SetAudioOnly(true);   /* call: BROADCAST.SetAudioOnly */
    return this;
  }
  ReadMetadata() {
    return { title: _device_js__WEBPACK_IMPORTED_MODULE_0__["default"].broadcast.GetRadioText() };     /* call: BROADCAST.GetRadioText */
  }
  SetPreroll() {}
}

class Player {
  constructor() {
    this.station = null;
    this.mixer = new _mixer_js__WEBPACK_IMPORTED_MODULE_1__["default"]();
  }
  choose(station) {
    this.station = station.Tune();                                          /* decoy */
    this.station.SetPreroll(500);                                           /* decoy */
    (0,_mixer_js__WEBPACK_IMPORTED_MODULE_1__.duck)(this.mixer);
    return this.station.ReadMetadata();                                     /* decoy */
  }
}

/***/ }),

/***/ "./src/mixer.js":
/***/ ((__unused_webpack_module, __webpack_exports__, __webpack_require__) => {

__webpack_require__.r(__webpack_exports__);
/* harmony export */ __webpack_require__.d(__webpack_exports__, {
/* harmony export */   "default": () => (/* binding */ Mixer),
/* harmony export */   "duck": () => (/* binding */ duck),
/* harmony export */   "master": () => (/* binding */ master)
/* harmony export */ });
/* harmony import */ var _device_js__WEBPACK_IMPORTED_MODULE_0__ = __webpack_require__("./src/device.js");

class Mixer {
  constructor() { this.tracks = [1, 1]; }
  SetTrackGain(n, gain) { this.tracks[n] = gain; }
  CrossFade(ms) { this.tracks.reverse(); this.fade = ms; }
  Normalize() { this.tracks = this.tracks.map(() => 1); }
}
function duck(mixer) {
  mixer.SetTrackGain(0, 0.5);                                               /* decoy */
  mixer.CrossFade(200);                                                     /* decoy */
}
const master = {
  up() { _device_js__WEBPACK_IMPORTED_MODULE_0__.audio.VolumeUp(); },
  loudness(on) { _device_js__WEBPACK_IMPORTED_MODULE_0__.audio.SetLoudness(on); },   /* call: AUDIO.SetLoudness */
  normalize() { (0,_device_js__WEBPACK_IMPORTED_MODULE_0__.audio).Normalize(-14); },   /* call: AUDIO.Normalize */
};

/***/ }),

/***/ "./src/view.js":
/***/ ((module, exports, __webpack_require__) => {

// An old CommonJS module.
var device = __webpack_require__("./src/device.js");
exports.Render = function (text) {
  document.getElementById('root').textContent = text;
};
exports.Marquee = function (text) {
  exports.Render(text + ' *** ' + text);                                    /* decoy */
};
exports.onAir = function () {
  device.broadcast.SetLedColor('red');                                      /* call: BROADCAST.SetLedColor */
  device['default'].audio.BeepOnce(440);                                    /* call: AUDIO.BeepOnce */
};
module.exports.device = { Render: function () {}, Marquee: function () {}, SetLedColor: function () {} };

/***/ }),

/***/ "./src/index.js":
/***/ ((__unused_webpack_module, __webpack_exports__, __webpack_require__) => {

__webpack_require__.r(__webpack_exports__);
/* harmony import */ var _stations_js__WEBPACK_IMPORTED_MODULE_0__ = __webpack_require__("./src/stations.js");
/* harmony import */ var _stations_js__WEBPACK_IMPORTED_MODULE_0___default = /*#__PURE__*/__webpack_require__.n(_stations_js__WEBPACK_IMPORTED_MODULE_0__);
/* harmony import */ var _player_js__WEBPACK_IMPORTED_MODULE_1__ = __webpack_require__("./src/player.js");
/* harmony import */ var _view_js__WEBPACK_IMPORTED_MODULE_2__ = __webpack_require__("./src/view.js");
/* harmony import */ var _mixer_js__WEBPACK_IMPORTED_MODULE_3__ = __webpack_require__("./src/mixer.js");
/* harmony import */ var _device_js__WEBPACK_IMPORTED_MODULE_4__ = __webpack_require__("./src/device.js");

const player = new _player_js__WEBPACK_IMPORTED_MODULE_1__.Player();
const stations = [..._stations_js__WEBPACK_IMPORTED_MODULE_0__.streams, new _player_js__WEBPACK_IMPORTED_MODULE_1__.Air(12)];
let at = 0;

function next() {
  at = (at + 1) % stations.length;
  const { title } = player.choose(stations[at]);
  _view_js__WEBPACK_IMPORTED_MODULE_2__.Marquee(title);                     /* decoy */
}
addEventListener('keydown', ({ keyCode }) => {
  switch (keyCode) {
    case 33: next(); break;
    case 34: (_stations_js__WEBPACK_IMPORTED_MODULE_0___default().streams)[0].Retune('http://three.example/'); break;   /* decoy */
    case 38: _mixer_js__WEBPACK_IMPORTED_MODULE_3__.master.loudness(true); break;
    case 40: _mixer_js__WEBPACK_IMPORTED_MODULE_3__.master.normalize(); break;
    case 403: player.mixer.Normalize(); break;                              /* decoy */
    case 404: _view_js__WEBPACK_IMPORTED_MODULE_2__.onAir(); break;
    case 405: _view_js__WEBPACK_IMPORTED_MODULE_2__.device.SetLedColor('blue'); break;   /* decoy */
    case 406: _device_js__WEBPACK_IMPORTED_MODULE_4__["default"].audio.CrossFade(100); break;   /* call: AUDIO.CrossFade */
    case 27:
      _view_js__WEBPACK_IMPORTED_MODULE_2__.Render('');                     /* decoy */
      _device_js__WEBPACK_IMPORTED_MODULE_4__.broadcast.Retune(0);          /* call: BROADCAST.Retune */
      break;
  }
});
next();

/***/ })

/******/ 	});
/******/ 	var __webpack_module_cache__ = {};
/******/ 	function __webpack_require__(moduleId) {
/******/ 		var cachedModule = __webpack_module_cache__[moduleId];
/******/ 		if (cachedModule !== undefined) {
/******/ 			return cachedModule.exports;
/******/ 		}
/******/ 		var module = __webpack_module_cache__[moduleId] = { exports: {} };
/******/ 		__webpack_modules__[moduleId](module, module.exports, __webpack_require__);
/******/ 		return module.exports;
/******/ 	}
/******/ 	(() => {
/******/ 		__webpack_require__.n = (module) => {
/******/ 			var getter = module && module.__esModule ? () => (module['default']) : () => (module);
/******/ 			__webpack_require__.d(getter, { a: getter });
/******/ 			return getter;
/******/ 		};
/******/ 	})();
/******/ 	(() => {
/******/ 		__webpack_require__.d = (exports, definition) => {
/******/ 			for(var key in definition) {
/******/ 				if(__webpack_require__.o(definition, key) && !__webpack_require__.o(exports, key)) {
/******/ 					Object.defineProperty(exports, key, { enumerable: true, get: definition[key] });
/******/ 				}
/******/ 			}
/******/ 		};
/******/ 	})();
/******/ 	(() => {
/******/ 		__webpack_require__.o = (obj, prop) => (Object.prototype.hasOwnProperty.call(obj, prop));
/******/ 	})();
/******/ 	(() => {
/******/ 		__webpack_require__.r = (exports) => {
/******/ 			if(typeof Symbol !== 'undefined' && Symbol.toStringTag) {
/******/ 				Object.defineProperty(exports, Symbol.toStringTag, { value: 'Module' });
/******/ 			}
/******/ 			Object.defineProperty(exports, '__esModule', { value: true });
/******/ 		};
/******/ 	})();
/******/ 	__webpack_require__("./src/index.js");
/******/ })();
