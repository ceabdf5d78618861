"use strict";

function _classCallCheck(instance, Constructor) { if (!(instance instanceof Constructor)) { throw new TypeError("Cannot call a class as a function"); } }

function _defineProperties(target, props) { for (var i = 0; i < props.length; i++) { var descriptor = props[i]; descriptor.enumerable = descriptor.enumerable || false; descriptor.configurable = true; if ("value" in descriptor) descriptor.writable = true; Object.defineProperty(target, descriptor.key, descriptor); } }

function _createClass(Constructor, protoProps, staticProps) { if (protoProps) _defineProperties(Constructor.prototype, protoProps); if (staticProps) _defineProperties(Constructor, staticProps); return Constructor; }

function _inherits(subClass, superClass) { subClass.prototype = Object.create(superClass && superClass.prototype, { constructor: { value: subClass, writable: true, configurable: true } }); if (superClass) Object.setPrototypeOf(subClass, superClass); }

function _possibleConstructorReturn(self, call) { if (call && (typeof call === "object" || typeof call === "function")) { return call; } return self; }

function _slicedToArray(arr, i) { if (Array.isArray(arr)) return arr.slice(0, i); var _arr = []; for (var _i = arr[Symbol.iterator](), _s; _arr.length < i && !(_s = _i.next()).done;) { _arr.push(_s.value); } return _arr; }

function asyncGeneratorStep(gen, resolve, reject, _next, _throw, key, arg) { try { var info = gen[key](arg); var value = info.value; } catch (error) { reject(error); return; } if (info.done) { resolve(value); } else { Promise.resolve(value).then(_next, _throw); } }

function _asyncToGenerator(fn) { return function () { var self = this, args = arguments; return new Promise(function (resolve, reject) { var gen = fn.apply(self, args); function _next(value) { asyncGeneratorStep(gen, resolve, reject, _next, _throw, "next", value); } function _throw(err) { asyncGeneratorStep(gen, resolve, reject, _next, _throw, "throw", err); } _next(undefined); }); }; }

var sleep = function sleep(ms) {
  return new Promise(function (resolve) {
    return setTimeout(resolve, ms);
  });
};

var Feeder = function () {
  function Feeder(port) {
    var options = arguments.length > 1 && arguments[1] !== undefined ? arguments[1] : {};

    _classCallCheck(this, Feeder);

    var _options$baud = options.baud,
        baud = _options$baud === void 0 ? 4800 : _options$baud;
    this.port = port;
    this.port.Open();
    this.port.SetBaudRate(baud);
    this.port.SetLineEnding("\r\n"); /* call: SERIALPORT.SetLineEnding */
    this.fed = 0;
  }

  _createClass(Feeder, [{
    key: "feed",
    value: function () {
      var _feed = _asyncToGenerator(function* (grams) {
        this.port.WriteLine("FEED ".concat(grams)); /* call: SERIALPORT.WriteLine */
        yield sleep(3);
        var answer = this.port.ReadLine(100); /* call: SERIALPORT.ReadLine */
        this.fed += grams;
        return answer;
      });

      function feed(_x) {
        return _feed.apply(this, arguments);
      }

      return feed;
    }()
  }, {
    key: "level",
    get: function get() {
      return this.port.QueryRegister(7); /* call: SERIALPORT.QueryRegister */
    }
  }], [{
    key: "find",
    value: function find(id) {
      return new Feeder(document.getElementById(id));
    }
  }]);

  return Feeder;
}();

var Planner = function () {
  function Planner(calendar) {
    _classCallCheck(this, Planner);

    this.calendar = calendar;
    this.entries = new Map();
  }

  _createClass(Planner, [{
    key: "plan",
    value: function plan(_ref) {
      var hour = _ref.hour,
          _ref$grams = _ref.grams,
          grams = _ref$grams === void 0 ? 50 : _ref$grams;
      var entry = this.calendar.AddEntry("Feed " + grams);
      this.calendar.SetRecurrence(entry, "daily", hour); /* call: CALENDAR.SetRecurrence */
      this.entries.set(hour, grams);
      return this;
    }
  }, {
    key: "due",
    value: function due(hour) {
      var result = [];
      var _iterator = this.entries[Symbol.iterator](), _step;
      while (!(_step = _iterator.next()).done) {
        var _step$value = _slicedToArray(_step.value, 2),
            at = _step$value[0],
            grams = _step$value[1];
        if (at <= hour) {
          result.push(grams);
          this.calendar.CompleteEntry(at); /* call: CALENDAR.CompleteEntry */
        }
      }
      return result;
    }
  }]);

  return Planner;
}();

var HolidayPlanner = function (_Planner) {
  _inherits(HolidayPlanner, _Planner);

  function HolidayPlanner() {
    _classCallCheck(this, HolidayPlanner);

    return _possibleConstructorReturn(this, (HolidayPlanner.__proto__ || Object.getPrototypeOf(HolidayPlanner)).apply(this, arguments));
  }

  _createClass(HolidayPlanner, [{
    key: "plan",
    value: function plan(entry) {
      _Planner.prototype.plan.call(this, Object.assign({}, entry, { grams: 80 }));
      this.calendar.MarkHoliday(entry.hour); /* call: CALENDAR.MarkHoliday */
      return this;
    }
  }]);

  return HolidayPlanner;
}(Planner);

// The simulator answers like the feeder. It is used where nothing is plugged in.
var Simulator = function () {
  function Simulator() {
    _classCallCheck(this, Simulator);
    this.lines = [];
  }

  _createClass(Simulator, [{
    key: "WriteLine",
    value: function WriteLine(text) {
      this.lines.push(text);
      return this;
    }
  }, {
    key: "ReadLine",
    value: function ReadLine() {
      return this.lines.shift();
    }
  }]);

  return Simulator;
}();

var feeder = Feeder.find("port");
var planner = new HolidayPlanner(document.getElementById("cal"));
planner.plan({ hour: 7 }).plan({ hour: 18 });

var draw = function draw() {
  document.getElementById("app").textContent = "".concat(feeder.fed, " g fed, level ").concat(feeder.level);
};

document.addEventListener("keydown", function (_ref2) {
  var keyCode = _ref2.keyCode;

  switch (keyCode) {
    case 13:
      planner.due(12).reduce(function (before, grams) {
        return before.then(function () {
          return feeder.feed(grams);
        });
      }, Promise.resolve()).then(draw);
      break;

    case 403:
      var simulator = new Simulator();
      document.title = simulator.WriteLine("FEED 1").ReadLine(); /* decoy */
      break;

    case 404:
      _asyncToGenerator(function* () {
        yield null;
        feeder.port.SendBreak(20); /* call: SERIALPORT.SendBreak */
      })();
      break;

    case 405:
      var _planner = planner,
          calendar = _planner.calendar;
      calendar.ExportIcs("feeder.ics"); /* call: CALENDAR.ExportIcs */
      break;
  }
});
draw();
