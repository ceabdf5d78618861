// What a browser gives of the files of a package. Nothing here is ever run.
function fetch(request) {
  var text = __tarvoFile(request) || __tarvoFile(request.url);
  return Promise.resolve({
    ok: true, status: 200, clone: function () { return this; },
    text: function () { return Promise.resolve(text); },
    json: function () { return Promise.resolve(JSON.parse(text)); }
  });
}
function Request(url) { this.url = url; }
function XMLHttpRequest() { this.handlers = []; }
XMLHttpRequest.prototype = {
  open: function (method, url) {
    this.responseText = __tarvoFile(url);
    this.response = this.responseText;
    this.response = JSON.parse(this.responseText);
  },
  send: function () {
    var event = { target: this, currentTarget: this };
    this.onload(event);
    this.onreadystatechange(event);
    this.onloadend(event);
    this.onerror(event);
    for (var f of this.handlers) f.call(this, event);
  },
  addEventListener: function (name, f) { this.handlers.push(f); },
  setRequestHeader: function () {}, overrideMimeType: function () {}, abort: function () {},
  getResponseHeader: function () {}, getAllResponseHeaders: function () {}
};
