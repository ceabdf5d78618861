/******/ (() => { // the runtime that a bundler makes
/******/ 	"use strict";
/******/ 	var __modules = ({
/***/ 10: ((module, __exports, __req) => {
__req.d(__exports, { "a": () => (getPlugin), "Z": () => __default });
const getPlugin = () => document.getElementById("eng");
const __default = { stamp: (p) => p.StampChapter(1) };   /* call: RECORDER.StampChapter */
/***/ }),
/***/ 20: ((module, exports, __req) => {
var _tools = __req(10), tools = __req.n(_tools);
(0,_tools.a)().SetPostRoll(60);   /* call: RECORDER.SetPostRoll */
_tools.Z.stamp((0,_tools.a)());
module.exports = function (cb) { cb(_tools.a()); };
/***/ })
/******/ 	});
/******/ 	var __cache = {};
/******/ 	function __req(id) {
/******/ 		if (__cache[id] !== undefined) return __cache[id].exports;
/******/ 		var module = __cache[id] = { exports: {} };
/******/ 		__modules[id](module, module.exports, __req);
/******/ 		return module.exports;
/******/ 	}
/******/ 	__req.d = (exports, def) => { for (var k in def) Object.defineProperty(exports, k, { enumerable: true, get: def[k] }); };
/******/ 	__req.n = (m) => (() => m);
__req(20)((p) => p.SealTitle("x"));   /* call: RECORDER.SealTitle */
/******/ })();
