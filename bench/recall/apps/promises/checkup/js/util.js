// What a check needs around promises.
function plugin(id) {
  return new Promise(function (resolve, reject) {
    var element = document.getElementById(id);
    if (element) {
      resolve(element);
    } else {
      reject(new Error('no element ' + id));
    }
  });
}

function wait(ms) {
  return function (value) {
    return new Promise(function (resolve) {
      setTimeout(function () { resolve(value); }, ms);
    });
  };
}

function withTimeout(promise, ms) {
  return Promise.race([promise, wait(ms)().then(function () { throw new Error('timeout'); })]);
}

function series(tasks) {
  return tasks.reduce(function (before, task) {
    return before.then(task);
  }, Promise.resolve());
}

function fetchText(url) {
  return new Promise(function (resolve, reject) {
    var xhr = new XMLHttpRequest();
    xhr.open('GET', url);
    xhr.onload = function () { resolve(xhr.responseText); };
    xhr.onerror = function () { reject(new Error('network')); };
    xhr.send();
  });
}
