(function () {
  angular.module('tv', ['tv.core']).controller('MainCtrl', MainCtrl).directive('myMeter', myMeter).run(start);
  angular.module('tv.core', []).factory('power', ['$window', function ($window) { return $window.document.getElementById('po'); }])
    .service('Net', NetService).constant('RATE', 5).provider('meter', function () { var d = null; this.set = function (x) { d = x; };
      this.$get = function () { return { dev: d, kick: function () { d.KickMeter(); } }; }; })   /* call: BANDWIDTH.KickMeter */
    .config(function (meterProvider) { meterProvider.set(document.getElementById('bw')); });
  MainCtrl.$inject = ['$scope', 'power', 'Net', '$timeout', 'meter'];
  function MainCtrl($s, pw, net, later, m) {
    var vm = this;
    vm.power = pw; vm.bw = net.device; vm.devices = [net.device];
    vm.reboot = function () { pw.HardReboot(); };   /* call: POWER.HardReboot */
    $s.$watch('vm.x', function () { net.measure(2); });
    later(function () { vm.power.LateSleep(); }, 1);   /* call: POWER.LateSleep */
    m.kick(); m.dev.MeterRaw();   /* call: BANDWIDTH.MeterRaw */
    $s.$on('evt', function (e, p) { p.OnEvent9(); });   /* call: POWER.OnEvent9 */
    $s.$emit('evt', pw);
    setTimeout(function () { document.querySelector('.t').click(); document.querySelector('button').click(); }, 100);
  }
  function NetService(RATE) { this.device = document.getElementById('bw'); this.measure = function (n) { this.device.Measure9(n * RATE); }; }   /* call: BANDWIDTH.Measure9 */
  function myMeter() { return { restrict: 'E', scope: { dev: '=' }, link: function (scope, el, attrs) { scope.dev && scope.dev.LinkMeter(); } }; }   /* call: BANDWIDTH.LinkMeter */
  function start($rootScope, power) { power.RunPhase(); }   /* call: POWER.RunPhase */
})();
