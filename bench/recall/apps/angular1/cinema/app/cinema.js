(function (angular) {
    'use strict';
    angular.module('cinema', [])
        .factory('plugins', ['$document', function ($document) {
            return { get: function (id) { return $document[0].getElementById(id); } };
        }])
        .service('Player', ['plugins', '$q', function (plugins, $q) {
            var p = plugins.get('player');
            this.plugin = p;
            this.open = function (url) {
                p.Open(url);
                p.SetLicenseCache(url);   /* call: PLAYER.SetLicenseCache */
                return $q.when({ plugin: p });
            };
        }])
        .provider('screen', function () {
            var id = 'none';
            this.use = function (v) { id = v; };
            this.$get = ['plugins', function (plugins) { return { node: plugins.get(id) }; }];
        })
        .config(['screenProvider', function (screenProvider) { screenProvider.use('screen'); }])
        .run(['screen', '$rootScope', function (screen, $rootScope) {
            screen.node.SetHdrMetadata({ max: 1000 });   /* call: SCREEN.SetHdrMetadata */
            $rootScope.$on('film', function (event, p) { p.TagSession('film'); });   /* call: PLAYER.TagSession */
        }])
        .controller('FilmController', ['$scope', 'Player', '$timeout', function ($scope, Player, $timeout) {
            var vm = this;
            vm.titles = ['One', 'Two'];
            vm.plugin = Player.plugin;
            vm.play = function (title) {
                Player.open(title).then(function (box) {
                    box.plugin.Play();
                    box.plugin.SetAbrLadder([1, 2]);   /* call: PLAYER.SetAbrLadder */
                    $scope.$emit('film', box.plugin);
                });
            };
            vm.ready = function (panel) { panel.GetEdidBlock(0); };   /* call: SCREEN.GetEdidBlock */
            $scope.$watch(function () { return vm.count; }, function () { vm.plugin.GetDropCount(); });   /* call: PLAYER.GetDropCount */
            $timeout(function () { vm.plugin.ShrinkCache(); }, 5);   /* call: PLAYER.ShrinkCache */
            vm.fake = { ShrinkCache: angular.noop };
            vm.fake.ShrinkCache();   /* decoy */
        }])
        .directive('tvFrame', ['screen', function (screen) {
            return {
                restrict: 'E', scope: { onReady: '&' },
                link: function (scope, element) {
                    screen.node.ReserveLayer(2);   /* call: SCREEN.ReserveLayer */
                    element.on('click', function () { screen.node.FlashBorder('red'); });   /* call: SCREEN.FlashBorder */
                    scope.onReady({ panel: screen.node });
                }
            };
        }])
        .value('layers', { ReserveLayer: function () { } })
        .run(['layers', function (layers) { layers.ReserveLayer(1); }]);   /* decoy */
}(window.angular));
