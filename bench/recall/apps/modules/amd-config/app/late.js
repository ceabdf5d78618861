define(['require', 'settings'], function (require) {
  var s = require('settings');
  return function (r) { r.LateCommit(); s.device.LateAbort(); };   /* call: RECORDER.LateCommit, RECORDER.LateAbort */
});
