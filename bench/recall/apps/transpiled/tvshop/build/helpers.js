"use strict";

function _typeof(obj) { return typeof obj; }

function _classCallCheck(instance, Constructor) { if (!(instance instanceof Constructor)) { throw new TypeError("Cannot call a class as a function"); } }

function _defineProperties(target, props) { for (var i = 0; i < props.length; i++) { var descriptor = props[i]; descriptor.enumerable = descriptor.enumerable || false; descriptor.configurable = true; if ("value" in descriptor) descriptor.writable = true; Object.defineProperty(target, descriptor.key, descriptor); } }

function _createClass(Constructor, protoProps, staticProps) { if (protoProps) _defineProperties(Constructor.prototype, protoProps); if (staticProps) _defineProperties(Constructor, staticProps); return Constructor; }

function _inherits(subClass, superClass) { subClass.prototype = Object.create(superClass && superClass.prototype, { constructor: { value: subClass, writable: true, configurable: true } }); if (superClass) Object.setPrototypeOf(subClass, superClass); }

function _possibleConstructorReturn(self, call) { if (call && (_typeof(call) === "object" || typeof call === "function")) { return call; } return self; }

function _getPrototypeOf(o) { return Object.getPrototypeOf(o); }

function _slicedToArray(arr, i) { return _arrayWithHoles(arr) || _iterableToArrayLimit(arr, i); }

function _arrayWithHoles(arr) { if (Array.isArray(arr)) return arr; }

function _iterableToArrayLimit(arr, i) { var _arr = []; var _it = arr[Symbol.iterator](), _s; while (!(_s = _it.next()).done) { _arr.push(_s.value); if (i && _arr.length === i) break; } return _arr; }

function _objectWithoutProperties(source, excluded) { var target = {}; Object.keys(source).forEach(function (key) { if (excluded.indexOf(key) < 0) target[key] = source[key]; }); return target; }

function _extends() { return Object.assign.apply(Object, arguments); }

function asyncGeneratorStep(gen, resolve, reject, _next, _throw, key, arg) { try { var info = gen[key](arg); var value = info.value; } catch (error) { reject(error); return; } if (info.done) { resolve(value); } else { Promise.resolve(value).then(_next, _throw); } }

function _asyncToGenerator(fn) { return function () { var self = this, args = arguments; return new Promise(function (resolve, reject) { var gen = fn.apply(self, args); function _next(value) { asyncGeneratorStep(gen, resolve, reject, _next, _throw, "next", value); } function _throw(err) { asyncGeneratorStep(gen, resolve, reject, _next, _throw, "throw", err); } _next(undefined); }); }; }

// The state machine that generators become.
var regeneratorRuntime = {
  mark: function mark(fn) { return fn; },
  wrap: function wrap(innerFn, outerFn, self) {
    var context = { prev: 0, next: 0, sent: undefined, done: false, rval: undefined,
      stop: function stop() { this.done = true; return this.rval; },
      abrupt: function abrupt(type, value) { if (type === "return") { this.rval = value; this.next = "end"; } } };
    function step(value) {
      context.sent = value;
      while (true) {
        if (context.done) return { value: context.rval, done: true };
        var before = context.next;
        var result = innerFn.call(self, context);
        if (context.done) return { value: context.rval, done: true };
        if (context.next !== "end" || result !== undefined) { if (before !== "end") return { value: result, done: false }; }
      }
    }
    return { next: step, "throw": function (error) { throw error; } };
  }
};
