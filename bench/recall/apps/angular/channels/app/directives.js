angular.module('channels')

    .directive('tvPlugin', ['plugins', function (plugins) {
        return {
            restrict: 'E',
            link: function (scope, element, attributes) {
                var node = document.createElement('object');
                node.setAttribute('classid', 'clsid:MORVANE-NAVERTIX-' + attributes.kind);
                element.append(node);
                plugins.add(attributes.name, node);
            }
        };
    }])

    .directive('tvKeys', ['$document', function ($document) {
        return function (scope, element, attributes) {
            $document.on('keydown', function (event) {
                scope.$apply(function () {
                    scope.$eval(attributes.tvKeys, { code: event.keyCode });
                });
            });
        };
    }]);
