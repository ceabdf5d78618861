function loadJson(url, done, failed) {
  var xhr = new XMLHttpRequest();
  xhr.open("GET", url);
  xhr.onload = function () {
    if (xhr.status === 200) {
      done(JSON.parse(xhr.responseText));
    } else if (failed) {
      failed(xhr.status);
    }
  };
  xhr.onerror = function () { if (failed) { failed(0); } };
  xhr.send();
}

function loadScript(url, done) {
  var s = document.createElement("script");
  s.src = url;
  s.onload = done;
  document.head.appendChild(s);
}
