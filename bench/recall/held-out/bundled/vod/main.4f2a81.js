/******/ (function(modules) { // webpackBootstrap
/******/ 	// The module cache
/******/ 	var installedModules = {};
/******/ 	// The require function
/******/ 	function __webpack_require__(moduleId) {
/******/ 		if(installedModules[moduleId]) {
/******/ 			return installedModules[moduleId].exports;
/******/ 		}
/******/ 		var module = installedModules[moduleId] = {
/******/ 			i: moduleId,
/******/ 			l: false,
/******/ 			exports: {}
/******/ 		};
/******/ 		modules[moduleId].call(module.exports, module, module.exports, __webpack_require__);
/******/ 		module.l = true;
/******/ 		return module.exports;
/******/ 	}
/******/ 	__webpack_require__.m = modules;
/******/ 	__webpack_require__.c = installedModules;
/******/ 	__webpack_require__.d = function(exports, name, getter) {
/******/ 		if(!__webpack_require__.o(exports, name)) {
/******/ 			Object.defineProperty(exports, name, { enumerable: true, get: getter });
/******/ 		}
/******/ 	};
/******/ 	__webpack_require__.r = function(exports) {
/******/ 		if(typeof Symbol !== 'undefined' && Symbol.toStringTag) {
/******/ 			Object.defineProperty(exports, Symbol.toStringTag, { value: 'Module' });
/******/ 		}
/******/ 		Object.defineProperty(exports, '__esModule', { value: true });
/******/ 	};
/******/ 	__webpack_require__.n = function(module) {
/******/ 		var getter = module && module.__esModule ?
/******/ 			function getDefault() { return module['default']; } :
/******/ 			function getModuleExports() { return module; };
/******/ 		__webpack_require__.d(getter, 'a', getter);
/******/ 		return getter;
/******/ 	};
/******/ 	__webpack_require__.o = function(object, property) { return Object.prototype.hasOwnProperty.call(object, property); };
/******/ 	return __webpack_require__(__webpack_require__.s = "./src/index.js");
/******/ })
/************************************************************************/
/******/ ({

/***/ "./node_modules/mitt/dist/mitt.js":
/***/ (function(module, exports) {

module.exports = function (all) {
  all = all || Object.create(null);
  return {
    on: function on(type, handler) { (all[type] || (all[type] = [])).push(handler); },
    off: function off(type, handler) { if (all[type]) { all[type].splice(all[type].indexOf(handler) >>> 0, 1); } },
    emit: function emit(type, evt) { (all[type] || []).slice().map(function (handler) { handler(evt); }); }
  };
};

/***/ }),

/***/ "./src/api/plugins.js":
/***/ (function(module, __webpack_exports__, __webpack_require__) {

"use strict";
__webpack_require__.r(__webpack_exports__);
/* harmony export (binding) */ __webpack_require__.d(__webpack_exports__, "player", function() { return player; });
/* harmony export (binding) */ __webpack_require__.d(__webpack_exports__, "bandwidth", function() { return bandwidth; });
/* harmony export (binding) */ __webpack_require__.d(__webpack_exports__, "getPlugin", function() { return getPlugin; });
var PREFIX = "vod-";
var getPlugin = function getPlugin(name) {
  return document.getElementById(PREFIX + name);
};
var player = getPlugin("player");
var bandwidth = getPlugin("bandwidth");
/* harmony default export */ __webpack_exports__["default"] = ({
  player: player,
  storage: getPlugin("storage")
});

/***/ }),

/***/ "./src/api/adaptive.js":
/***/ (function(module, __webpack_exports__, __webpack_require__) {

"use strict";
__webpack_require__.r(__webpack_exports__);
/* harmony import */ var _plugins__WEBPACK_IMPORTED_MODULE_0__ = __webpack_require__("./src/api/plugins.js");
function _classCallCheck(instance, Constructor) { if (!(instance instanceof Constructor)) { throw new TypeError("Cannot call a class as a function"); } }
function _defineProperties(target, props) { for (var i = 0; i < props.length; i++) { var descriptor = props[i]; descriptor.enumerable = descriptor.enumerable || false; descriptor.configurable = true; if ("value" in descriptor) descriptor.writable = true; Object.defineProperty(target, descriptor.key, descriptor); } }
function _createClass(Constructor, protoProps, staticProps) { if (protoProps) _defineProperties(Constructor.prototype, protoProps); if (staticProps) _defineProperties(Constructor, staticProps); return Constructor; }

var Adaptive = /*#__PURE__*/function () {
  function Adaptive(events) {
    _classCallCheck(this, Adaptive);
    this.events = events;
    this.rates = [];
  }
  _createClass(Adaptive, [{
    key: "start",
    value: function start() {
      var _this = this;
      _plugins__WEBPACK_IMPORTED_MODULE_0__["bandwidth"].StartMeasurement();
      _plugins__WEBPACK_IMPORTED_MODULE_0__["bandwidth"].SetProbeSize(65536);    /* call: BANDWIDTH.SetProbeSize */
      this.timer = setInterval(function () {
        return _this.sample();
      }, 100);
    }
  }, {
    key: "sample",
    value: function sample() {
      var rate = Object(_plugins__WEBPACK_IMPORTED_MODULE_0__["getPlugin"])("bandwidth").GetPeakRate();    /* call: BANDWIDTH.GetPeakRate */
      this.rates.push(rate);
      this.events.emit("rate", this.average);
    }
  }, {
    key: "average",
    get: function get() {
      return this.rates.reduce(function (a, b) { return a + b; }, 0) / this.rates.length;
    }
  }]);
  return Adaptive;
}();
/* harmony default export */ __webpack_exports__["default"] = (Adaptive);

/***/ }),

/***/ "./src/store/watchlist.js":
/***/ (function(module, exports, __webpack_require__) {

// CommonJS, older than the rest
var plugins = __webpack_require__("./src/api/plugins.js").default;
var storage = plugins.storage;

exports.add = function (id) {
  storage.SetItem("film" + id, "1");
  storage.SetExpiry("film" + id, 30);    /* call: STORAGE.SetExpiry */
};
exports.sync = function () {
  return storage.SyncToCloud("watchlist");    /* call: STORAGE.SyncToCloud */
};
exports.compact = storage.CompactNow ? function () { storage.CompactNow(); } : function () {};    /* call: STORAGE.CompactNow */

/***/ }),

/***/ "./src/ui/views.js":
/***/ (function(module, __webpack_exports__, __webpack_require__) {

"use strict";
__webpack_require__.r(__webpack_exports__);
/* harmony export (binding) */ __webpack_require__.d(__webpack_exports__, "createList", function() { return createList; });
/* harmony export (binding) */ __webpack_require__.d(__webpack_exports__, "overlay", function() { return overlay; });
function createList(root, films) {
  var selected = 0;
  function render() {
    root.innerHTML = films.map(function (film, i) {
      return "<div class=\"film" + (i === selected ? " film--on" : "") + "\">" + film.title + "</div>";
    }).join("");
  }
  return {
    render: render,
    move: function move(by) { selected = (selected + by + films.length) % films.length; render(); },
    current: function current() { return films[selected]; }
  };
}
var overlay = {
  SetBitrateCap: function SetBitrateCap(v) { this.cap = v; },
  SetExpiry: function SetExpiry(v) { this.expiry = v; },
  show: function show(text) { document.title = text; }
};

/***/ }),

/***/ "./src/index.js":
/***/ (function(module, __webpack_exports__, __webpack_require__) {

"use strict";
__webpack_require__.r(__webpack_exports__);
/* harmony import */ var mitt__WEBPACK_IMPORTED_MODULE_0__ = __webpack_require__("./node_modules/mitt/dist/mitt.js");
/* harmony import */ var mitt__WEBPACK_IMPORTED_MODULE_0___default = /*#__PURE__*/__webpack_require__.n(mitt__WEBPACK_IMPORTED_MODULE_0__);
/* harmony import */ var _api_plugins__WEBPACK_IMPORTED_MODULE_1__ = __webpack_require__("./src/api/plugins.js");
/* harmony import */ var _api_adaptive__WEBPACK_IMPORTED_MODULE_2__ = __webpack_require__("./src/api/adaptive.js");
/* harmony import */ var _store_watchlist__WEBPACK_IMPORTED_MODULE_3__ = __webpack_require__("./src/store/watchlist.js");
/* harmony import */ var _ui_views__WEBPACK_IMPORTED_MODULE_4__ = __webpack_require__("./src/ui/views.js");

var events = mitt__WEBPACK_IMPORTED_MODULE_0___default()();
var films = [{ id: 7, title: "Nine bridges", url: "f/7.mpd" }, { id: 9, title: "The long harbour", url: "f/9.mpd" }];
var list = Object(_ui_views__WEBPACK_IMPORTED_MODULE_4__["createList"])(document.getElementById("app"), films);
var adaptive = new _api_adaptive__WEBPACK_IMPORTED_MODULE_2__["default"](events);
events.on("rate", function (rate) {
  _api_plugins__WEBPACK_IMPORTED_MODULE_1__["default"].player.SetBitrateCap(rate * 0.8);    /* call: PLAYER.SetBitrateCap */
  _ui_views__WEBPACK_IMPORTED_MODULE_4__["overlay"].SetBitrateCap(rate);    /* decoy */
});
events.on("play", function (_ref) {
  var url = _ref.url;
  _api_plugins__WEBPACK_IMPORTED_MODULE_1__["player"].Open(url);
  _api_plugins__WEBPACK_IMPORTED_MODULE_1__["player"].Play();
  _api_plugins__WEBPACK_IMPORTED_MODULE_1__["player"].SetStartupBuffer(2);    /* call: PLAYER.SetStartupBuffer */
});
var keys = {
  38: function _() { return list.move(-1); },
  40: function _() { return list.move(1); },
  13: function _() { return events.emit("play", list.current()); },
  403: function _() { return _store_watchlist__WEBPACK_IMPORTED_MODULE_3__["add"](list.current().id); },
  404: _store_watchlist__WEBPACK_IMPORTED_MODULE_3__["sync"],
  405: _store_watchlist__WEBPACK_IMPORTED_MODULE_3__["compact"],
  406: function _() {
    _ui_views__WEBPACK_IMPORTED_MODULE_4__["overlay"].SetExpiry(1);    /* decoy */
    _ui_views__WEBPACK_IMPORTED_MODULE_4__["overlay"].show("storage.PurgeAll() is gone");    /* decoy */
  },
  413: function _() {
    var p = Object(_api_plugins__WEBPACK_IMPORTED_MODULE_1__["getPlugin"])("player");
    p.Stop();
    p.SaveBookmark(list.current().id);    /* call: PLAYER.SaveBookmark */
  }
};
document.addEventListener("keydown", function (e) {
  var handler = keys[e.keyCode];
  handler && handler(e);
});
list.render();
adaptive.start();

/***/ })

/******/ });
