var listeners = [];
exports.attach = function (b) { b.AttachDemux(1); listeners.forEach(function (f) { f(b); }); };   /* call: BROADCAST.AttachDemux */
exports.late = function (f) { listeners.push(f); f(); };
