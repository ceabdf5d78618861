// Long polling, with a socket where there is one.
function Transport(base) {
  this.base = base;
  this.handlers = {};
  this.failures = 0;
}
Transport.prototype.on = function (type, fn) { this.handlers[type] = fn; return this; };
Transport.prototype.dispatch = function (message) {
  var fn = this.handlers[message.type];
  return fn ? fn(message) : undefined;
};
Transport.prototype.poll = function () {
  var self = this, xhr = new XMLHttpRequest();
  xhr.open("GET", this.base + "poll?" + Date.now(), true);
  xhr.onload = function () {
    self.failures = 0;
    try {
      self.dispatch(JSON.parse(xhr.responseText));
    } catch (e) {
      self.failures++;
    }
    self.poll();
  };
  xhr.onerror = function () {
    if (++self.failures < 3) { setTimeout(function () { self.poll(); }, 20); }
    else if (self.handlers.lost) { self.handlers.lost(); }
  };
  xhr.send();
};
Transport.prototype.post = function (data) {
  var xhr = new XMLHttpRequest();
  xhr.open("POST", this.base + "reply", true);
  xhr.setRequestHeader("Content-Type", "application/json");
  xhr.send(JSON.stringify(data));
};
