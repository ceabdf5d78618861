// Runs a generator: each promise that it yields comes back as its value.
function co(gen) {
  var args = [].slice.call(arguments, 1);
  return new Promise(function (resolve, reject) {
    var it = gen.apply(null, args);
    function step(verb, value) {
      var r;
      try { r = it[verb](value); } catch (e) { return reject(e); }
      if (r.done) return resolve(r.value);
      Promise.resolve(r.value).then(function (v) { step('next', v); }, function (e) { step('throw', e); });
    }
    step('next');
  });
}
function Deferred() {
  var self = this;
  this.promise = new Promise(function (ok, no) { self.resolve = ok; self.reject = no; });
}
var promisify = function (plugin, name) {
  return function () {
    var a = [].slice.call(arguments);
    return new Promise(function (ok) { plugin[name].apply(plugin, a.concat(ok)); });   /* call: SERIALPORT.RequestFrame, BLUETOOTH.QueryServices */
  };
};
