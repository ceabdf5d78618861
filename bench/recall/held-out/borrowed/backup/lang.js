// What old engines lack, and some helpers for functions.
var slice = Array.prototype.slice;

function bind(fn, self) {
  var fixed = slice.call(arguments, 2);
  return function () { return fn.apply(self, fixed.concat(slice.call(arguments))); };     /* also: FILESTORE.SyncVolume */
}

function partial(fn) {
  var fixed = slice.call(arguments, 1);
  return function () { return fn.apply(this, fixed.concat(slice.call(arguments))); };
}

function invoke(object, name) {
  return object[name].apply(object, slice.call(arguments, 2));      /* also: FILESTORE.SetLabel, FILESTORE.VerifyVolume */
}

function series(tasks, done) {
  var i = 0;
  (function next() {
    var task = tasks[i++];
    if (task) { task(next); } else if (done) { done(); }
  }());
}

function debounce(fn, ms) {
  var timer;
  return function () {
    var self = this, args = arguments;
    clearTimeout(timer);
    timer = setTimeout(function () { fn.apply(self, args); }, ms);
  };
}
