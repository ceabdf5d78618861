requirejs.config({
  baseUrl: 'app',
  paths: { lib: '../lib', hw: 'core/hardware' },
  shim: { 'lib/legacy': { exports: 'Legacy' } }
});
define('settings', { rate: 4, device: document.getElementById('rec') });
define('boot/helper', ['require', 'exports', 'settings'], function (require, exports, settings) {
  exports.rate = settings.rate;
  exports.spin = function () { settings.device.SpinUp(exports.rate); };   /* call: RECORDER.SpinUp */
});
requirejs(['main', 'boot/helper'], function (main, helper) {
  helper.spin();
  main.run().EjectMedia();   /* call: RECORDER.EjectMedia */
});
