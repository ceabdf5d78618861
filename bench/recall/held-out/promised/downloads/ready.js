// Plug-ins come after a while on this platform: wait for each.
function ready(id) {
  return new Promise(function (resolve, reject) {
    var tries = 0;
    (function look() {
      var element = document.getElementById(id);
      if (element && element.GetVersion !== null) {
        resolve(element);
      } else if (++tries > 20) {
        reject(new Error(id + " is missing"));
      } else {
        setTimeout(look, 5);
      }
    })();
  });
}

var lazily = function (make) {
  var promise;
  return function () { return promise || (promise = make()); };
};

var downloader = lazily(function () { return ready("dl"); });
var fileStore = lazily(function () { return ready("fs"); });
var all = function () { return Promise.all([downloader(), fileStore()]); };
