function Queue(limit) {
  this.limit = limit;
  this.active = 0;
  this.waiting = [];
}
Queue.prototype.add = function (task) {
  var queue = this;
  return new Promise(function (resolve, reject) {
    queue.waiting.push({ task: task, resolve: resolve, reject: reject });
    queue.next();
  });
};
Queue.prototype.next = function () {
  var queue = this;
  if (this.active >= this.limit || !this.waiting.length) { return; }
  var job = this.waiting.shift();
  this.active++;
  Promise.resolve().then(job.task).then(job.resolve, job.reject).then(function () {
    queue.active--;
    queue.next();
  });
};
// Names as in the plug-in, so that tests can put one for the other.
Queue.prototype.SetMaxConnections = function (n) { this.limit = n; };
Queue.prototype.ResumeAll = function () { this.next(); };
