angular.module('tv', [])
  .provider('plugin', function () {
    var ids = {};
    this.map = function (name, id) { ids[name] = id; };
    this.$get = ['$document', function ($document) {
      return function (name) { return $document[0].getElementById(ids[name] || name); };
    }];
  })
  .factory('display', ['plugin', function (plugin) {
    var element = plugin('disp');
    return {
      element: element,
      gallery: function (on) {
        element.EnableArtMode(on);                             /* call: DISPLAY.EnableArtMode */
      }
    };
  }])
  .service('Photos', ['plugin', 'FOLDERS', '$q', '$timeout', function (plugin, FOLDERS, $q, $timeout) {
    this.load = function () {
      var files = plugin('files');
      var names = files.ListFiles(FOLDERS.photos);
      files.WatchFolder(FOLDERS.photos);                       /* call: FILESTORE.WatchFolder */
      if (!angular.isArray(names)) { names = ['dune.jpg', 'pier.jpg', 'fog.jpg']; }
      return $timeout(function () {
        return names.map(function (name, i) { return { name: name, order: i }; });
      }, 5);
    };
    this.meta = function (photo) {
      var task = $q.defer();
      task.resolve({ photo: photo, reader: plugin('viewer') });
      return task.promise;
    };
    this.ReadExif = function (name) { return { name: name }; };
  }])
  .directive('tvSlider', ['display', function (display) {
    return {
      restrict: 'E',
      scope: { level: '=' },
      template: '<span ng-click="more()">{{level}}</span>',
      link: function (scope, element) {
        scope.more = function () {
          scope.level = (scope.level + 10) % 110;
          display.element.SetMatteLevel(scope.level);          /* call: DISPLAY.SetMatteLevel */
        };
        element.on('mouseover', function () {
          display.element.PreviewMatte();                      /* call: DISPLAY.PreviewMatte */
        });
      }
    };
  }]);
