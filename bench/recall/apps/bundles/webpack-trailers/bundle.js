/******/ (function(modules) { // webpackBootstrap
/******/ 	// The module cache
/******/ 	var installedModules = {};
/******/
/******/ 	// The require function
/******/ 	function __webpack_require__(moduleId) {
/******/
/******/ 		// Check if module is in cache
/******/ 		if(installedModules[moduleId]) {
/******/ 			return installedModules[moduleId].exports;
/******/ 		}
/******/ 		// Create a new module (and put it into the cache)
/******/ 		var module = installedModules[moduleId] = {
/******/ 			i: moduleId,
/******/ 			l: false,
/******/ 			exports: {}
/******/ 		};
/******/
/******/ 		// Execute the module function
/******/ 		modules[moduleId].call(module.exports, module, module.exports, __webpack_require__);
/******/
/******/ 		// Flag the module as loaded
/******/ 		module.l = true;
/******/
/******/ 		// Return the exports of the module
/******/ 		return module.exports;
/******/ 	}
/******/
/******/ 	// expose the modules object (__webpack_modules__)
/******/ 	__webpack_require__.m = modules;
/******/
/******/ 	// expose the module cache
/******/ 	__webpack_require__.c = installedModules;
/******/
/******/ 	// define getter function for harmony exports
/******/ 	__webpack_require__.d = function(exports, name, getter) {
/******/ 		if(!__webpack_require__.o(exports, name)) {
/******/ 			Object.defineProperty(exports, name, { enumerable: true, get: getter });
/******/ 		}
/******/ 	};
/******/
/******/ 	// define __esModule on exports
/******/ 	__webpack_require__.r = function(exports) {
/******/ 		if(typeof Symbol !== 'undefined' && Symbol.toStringTag) {
/******/ 			Object.defineProperty(exports, Symbol.toStringTag, { value: 'Module' });
/******/ 		}
/******/ 		Object.defineProperty(exports, '__esModule', { value: true });
/******/ 	};
/******/
/******/ 	// getDefaultExport function for compatibility with non-harmony modules
/******/ 	__webpack_require__.n = function(module) {
/******/ 		var getter = module && module.__esModule ?
/******/ 			function getDefault() { return module['default']; } :
/******/ 			function getModuleExports() { return module; };
/******/ 		__webpack_require__.d(getter, 'a', getter);
/******/ 		return getter;
/******/ 	};
/******/
/******/ 	// Object.prototype.hasOwnProperty.call
/******/ 	__webpack_require__.o = function(object, property) { return Object.prototype.hasOwnProperty.call(object, property); };
/******/
/******/ 	// __webpack_public_path__
/******/ 	__webpack_require__.p = "";
/******/
/******/
/******/ 	// Load entry module and return exports
/******/ 	return __webpack_require__(__webpack_require__.s = "./src/index.js");
/******/ })
/************************************************************************/
/******/ ({

/***/ "./src/data/trailers.json":
/*!********************************!*\
  !*** ./src/data/trailers.json ***!
  \********************************/
/*! exports provided: 0, 1, default */
/***/ (function(module) {

module.exports = JSON.parse("[{\"id\":\"t1\",\"title\":\"Ash\",\"url\":\"ash.mp4\",\"hdr\":true},{\"id\":\"t2\",\"title\":\"Low Tide\",\"url\":\"tide.mp4\",\"hdr\":false}]");

/***/ }),

/***/ "./src/index.js":
/*!**********************!*\
  !*** ./src/index.js ***!
  \**********************/
/*! no exports provided */
/***/ (function(module, __webpack_exports__, __webpack_require__) {

"use strict";
__webpack_require__.r(__webpack_exports__);
/* harmony import */ var _platform_player__WEBPACK_IMPORTED_MODULE_0__ = __webpack_require__(/*! ./platform/player */ "./src/platform/player.js");
/* harmony import */ var _platform_screen__WEBPACK_IMPORTED_MODULE_1__ = __webpack_require__(/*! ./platform/screen */ "./src/platform/screen.js");
/* harmony import */ var _platform_screen__WEBPACK_IMPORTED_MODULE_1___default = /*#__PURE__*/__webpack_require__.n(_platform_screen__WEBPACK_IMPORTED_MODULE_1__);
/* harmony import */ var _ui_list__WEBPACK_IMPORTED_MODULE_2__ = __webpack_require__(/*! ./ui/list */ "./src/ui/list.js");
/* harmony import */ var _data_trailers_json__WEBPACK_IMPORTED_MODULE_3__ = __webpack_require__(/*! ./data/trailers.json */ "./src/data/trailers.json");





const app = document.getElementById('app');
const screen = _platform_screen__WEBPACK_IMPORTED_MODULE_1___default()();

const list = new _ui_list__WEBPACK_IMPORTED_MODULE_2__["default"](app, _data_trailers_json__WEBPACK_IMPORTED_MODULE_3__, trailer => {
  screen.SetHdrOutput(trailer.hdr); /* call: SCREEN.SetHdrOutput */
  Object(_platform_player__WEBPACK_IMPORTED_MODULE_0__["playTrailer"])(trailer);
});

document.addEventListener('keydown', e => {
  switch (e.keyCode) {
    case 38: list.move(-1); break;
    case 40: list.move(1); break;
    case 13: list.choose(); break;
    case 413:
      _platform_player__WEBPACK_IMPORTED_MODULE_0__["default"].Stop();
      _platform_player__WEBPACK_IMPORTED_MODULE_0__["default"].ReleaseDecoder(); /* call: PLAYER.ReleaseDecoder */
      break;
    case 403:
      screen.CaptureScreen('trailer.png');
      screen.SetCaptureQuality(90); /* call: SCREEN.SetCaptureQuality */
      break;
  }
});

list.draw();
screen.SetUiResolution(1920, 1080); /* call: SCREEN.SetUiResolution */

/***/ }),

/***/ "./src/platform/create.js":
/*!********************************!*\
  !*** ./src/platform/create.js ***!
  \********************************/
/*! exports provided: create */
/***/ (function(module, __webpack_exports__, __webpack_require__) {

"use strict";
__webpack_require__.r(__webpack_exports__);
/* harmony export (binding) */ __webpack_require__.d(__webpack_exports__, "create", function() { return create; });
const create = name => {
  const node = document.createElement('object');
  node.setAttribute('classid', `clsid:MORVANE-NAVERTIX-${name.toUpperCase()}`);
  node.width = node.height = 0;
  document.body.appendChild(node);
  return node;
};

/***/ }),

/***/ "./src/platform/player.js":
/*!********************************!*\
  !*** ./src/platform/player.js ***!
  \********************************/
/*! exports provided: playTrailer, preload, default */
/***/ (function(module, __webpack_exports__, __webpack_require__) {

"use strict";
__webpack_require__.r(__webpack_exports__);
/* harmony export (binding) */ __webpack_require__.d(__webpack_exports__, "playTrailer", function() { return playTrailer; });
/* harmony export (binding) */ __webpack_require__.d(__webpack_exports__, "preload", function() { return preload; });
/* harmony import */ var _create__WEBPACK_IMPORTED_MODULE_0__ = __webpack_require__(/*! ./create */ "./src/platform/create.js");

const player = Object(_create__WEBPACK_IMPORTED_MODULE_0__["create"])('player');
let playing = null;

function preload(url) {
  player.PrebufferUrl(url); /* call: PLAYER.PrebufferUrl */
}

function playTrailer({ id, url }) {
  if (playing === id) {
    player.Pause();
    return;
  }
  playing = id;
  player.Open(url);
  player.SetAudioDucking(0.4); /* call: PLAYER.SetAudioDucking */
  player.Play();
}

/* harmony default export */ __webpack_exports__["default"] = (player);

/***/ }),

/***/ "./src/platform/screen.js":
/*!********************************!*\
  !*** ./src/platform/screen.js ***!
  \********************************/
/*! no static exports found */
/***/ (function(module, exports, __webpack_require__) {

var create = __webpack_require__(/*! ./create */ "./src/platform/create.js").create;
var instance;

module.exports = function () {
  return instance || (instance = create('screen'));
};

/***/ }),

/***/ "./src/ui/list.js":
/*!************************!*\
  !*** ./src/ui/list.js ***!
  \************************/
/*! exports provided: default */
/***/ (function(module, __webpack_exports__, __webpack_require__) {

"use strict";
__webpack_require__.r(__webpack_exports__);
/* harmony export (binding) */ __webpack_require__.d(__webpack_exports__, "default", function() { return List; });
/* harmony import */ var _platform_player__WEBPACK_IMPORTED_MODULE_0__ = __webpack_require__(/*! ../platform/player */ "./src/platform/player.js");

class List {
  constructor(node, items, choose) {
    this.node = node;
    this.items = items;
    this.index = 0;
    this.onChoose = choose;
    this.player = { PrebufferUrl: url => this.requested.add(url) };
    this.requested = new Set();
  }
  move(by) {
    this.index = (this.index + by + this.items.length) % this.items.length;
    const { url } = this.items[this.index];
    this.player.PrebufferUrl(url); /* decoy */
    if (this.requested.size < 2) Object(_platform_player__WEBPACK_IMPORTED_MODULE_0__["preload"])(url);
    _platform_player__WEBPACK_IMPORTED_MODULE_0__["default"].HintNextUrl(url); /* call: PLAYER.HintNextUrl */
    this.draw();
  }
  choose() {
    this.onChoose(this.items[this.index]);
  }
  draw() {
    this.node.innerHTML = this.items.map((t, i) => `<p class="${i === this.index ? 'on' : ''}">${t.title}</p>`).join('');
  }
}

/***/ })

/******/ });
