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
/******/ 	__webpack_require__.p = "";
/******/
/******/ 	// Load entry module and return exports
/******/ 	return __webpack_require__(__webpack_require__.s = "./src/index.js");
/******/ })
/************************************************************************/
/******/ ({

/***/ "./src/index.js":
/*! no exports provided */
/***/ (function(module, __webpack_exports__, __webpack_require__) {

"use strict";
__webpack_require__.r(__webpack_exports__);
/* harmony import */ var _plugins__WEBPACK_IMPORTED_MODULE_0__ = __webpack_require__(/*! ./plugins */ "./src/plugins.js");
/* harmony import */ var _vault__WEBPACK_IMPORTED_MODULE_1__ = __webpack_require__(/*! ./vault */ "./src/vault.js");
/* harmony import */ var _legacy_pin__WEBPACK_IMPORTED_MODULE_2__ = __webpack_require__(/*! ./legacy/pin */ "./src/legacy/pin.js");
/* harmony import */ var _legacy_pin__WEBPACK_IMPORTED_MODULE_2___default = /*#__PURE__*/__webpack_require__.n(_legacy_pin__WEBPACK_IMPORTED_MODULE_2__);
/* harmony import */ var _view__WEBPACK_IMPORTED_MODULE_3__ = __webpack_require__(/*! ./view */ "./src/view.js");




const vault = new _vault__WEBPACK_IMPORTED_MODULE_1__["default"](_plugins__WEBPACK_IMPORTED_MODULE_0__["files"], '/vault');
const pin = _legacy_pin__WEBPACK_IMPORTED_MODULE_2___default()(_plugins__WEBPACK_IMPORTED_MODULE_0__["security"]);
const view = Object(_view__WEBPACK_IMPORTED_MODULE_3__["makeView"])('root');
document.addEventListener('keydown', event => {
  switch (event.keyCode) {
    case 13:
      vault.unlock(pin.ask());
      break;
    case 403:
      vault.add('/usb/photo1.jpg');
      break;
    case 404:
      vault.lock();
      break;
    case 405:
      _plugins__WEBPACK_IMPORTED_MODULE_0__["crypto"].DestroyKey('vault'); /* call: CRYPTO.DestroyKey */
      break;
    case 406:
      pin.reset();
      break;
    case 457:
      view.ShredFile('all'); /* decoy */
      break;
  }
  view.draw(vault);
});
_plugins__WEBPACK_IMPORTED_MODULE_0__["crypto"].SelectProvider('hardware'); /* call: CRYPTO.SelectProvider */
_plugins__WEBPACK_IMPORTED_MODULE_0__["default"].ready(_plugins__WEBPACK_IMPORTED_MODULE_0__["files"]);
view.draw(vault);

/***/ }),

/***/ "./src/legacy/pin.js":
/***/ (function(module, exports) {

module.exports = function makePin(security) {
  var tries = 0;
  return {
    ask: function () {
      tries++;
      if (security.CheckPin('0000')) {
        security.ClearTryCounter(); /* call: SECURITY.ClearTryCounter */
        return '0000';
      }
      return null;
    },
    reset: function () {
      tries = 0;
      security.SendPinByMail(); /* call: SECURITY.SendPinByMail */
    }
  };
};

/***/ }),

/***/ "./src/plugins.js":
/*! exports provided: crypto, files, security, default */
/***/ (function(module, __webpack_exports__, __webpack_require__) {

"use strict";
__webpack_require__.r(__webpack_exports__);
/* harmony export (binding) */ __webpack_require__.d(__webpack_exports__, "crypto", function() { return crypto; });
/* harmony export (binding) */ __webpack_require__.d(__webpack_exports__, "files", function() { return files; });
/* harmony export (binding) */ __webpack_require__.d(__webpack_exports__, "security", function() { return security; });
const byId = id => document.getElementById(id);

const crypto = byId('crypto');
const files = byId('filestore');
const security = byId('security');
/* harmony default export */ __webpack_exports__["default"] = ({
  ready(store) {
    store.MountUsb(0); /* call: FILESTORE.MountUsb */
  }
});

/***/ }),

/***/ "./src/vault.js":
/*! exports provided: default */
/***/ (function(module, __webpack_exports__, __webpack_require__) {

"use strict";
__webpack_require__.r(__webpack_exports__);
/* harmony export (binding) */ __webpack_require__.d(__webpack_exports__, "default", function() { return Vault; });
/* harmony import */ var _plugins__WEBPACK_IMPORTED_MODULE_0__ = __webpack_require__(/*! ./plugins */ "./src/plugins.js");
function _defineProperty(obj, key, value) { if (key in obj) { Object.defineProperty(obj, key, { value: value, enumerable: true, configurable: true, writable: true }); } else { obj[key] = value; } return obj; }


class Vault {
  constructor(store, folder) {
    _defineProperty(this, "open", false);
    _defineProperty(this, "names", []);
    _defineProperty(this, "onIdle", () => {
      this.store.FlushWriteCache(); /* call: FILESTORE.FlushWriteCache */
    });
    this.store = store;
    this.folder = folder;
    setTimeout(this.onIdle, 10);
  }
  unlock(pin) {
    this.open = pin !== null;
    if (this.open) {
      this.key = _plugins__WEBPACK_IMPORTED_MODULE_0__["crypto"].DeriveKey(pin, 'salt', 10000); /* call: CRYPTO.DeriveKey */
      this.names = Object.keys(this.store.ListFiles(this.folder));
    }
  }
  add(path) {
    const data = this.store.ReadFile(path);
    const sealed = _plugins__WEBPACK_IMPORTED_MODULE_0__["crypto"].Encrypt(this.key, data);
    this.store.WriteFile(`${this.folder}/${this.names.length}`, sealed);
    this.store.ShredFile(path); /* call: FILESTORE.ShredFile */
    this.names.push(path);
  }
  lock() {
    this.open = false;
    this.key = null;
    _plugins__WEBPACK_IMPORTED_MODULE_0__["security"].LockKeyStore(); /* call: SECURITY.LockKeyStore */
  }
}

/***/ }),

/***/ "./src/view.js":
/*! exports provided: makeView */
/***/ (function(module, __webpack_exports__, __webpack_require__) {

"use strict";
eval("__webpack_require__.r(__webpack_exports__);\n/* harmony export (binding) */ __webpack_require__.d(__webpack_exports__, \"makeView\", function() { return makeView; });\n/* harmony import */ var _plugins__WEBPACK_IMPORTED_MODULE_0__ = __webpack_require__(/*! ./plugins */ \"./src/plugins.js\");\n\nfunction makeView(id) {\n  const root = document.getElementById(id);\n  _plugins__WEBPACK_IMPORTED_MODULE_0__[\"security\"].HideFromRecents(true);\n  return {\n    draw(vault) { root.textContent = vault.open ? vault.names.join(' ') : 'locked'; },\n    ShredFile(name) { return name; }\n  };\n}\n\n//# sourceURL=webpack:///./src/view.js?"); /* text: SECURITY.HideFromRecents */

/***/ })

/******/ });
//# sourceMappingURL=main.bundle.js.map
