(function () {
  function MainController($scope, $rootScope, Photos, plugin, display) {
    var main = this;
    main.title = 'Gallery';
    main.photos = [];
    main.level = 50;
    main.viewer = function () { return plugin('viewer'); };

    Photos.load().then(function (photos) {
      main.photos = photos;
      main.show(photos[0]);
    });

    main.show = function (photo) {
      main.current = photo;
      plugin('viewer').ShowImage(photo.name);
      display.gallery(true);
      $rootScope.$broadcast('photo', photo);
      Photos.meta(photo).then(function (result) {
        main.hint = result.reader.ReadExif(photo.name);        /* call: IMAGEVIEWER.ReadExif */
        Photos.ReadExif(photo.name);                           /* decoy */
      });
    };

    main.key = function (event) {
      var at = main.photos.indexOf(main.current);
      if (event.keyCode === 39 && main.photos[at + 1]) { main.show(main.photos[at + 1]); }
      if (event.keyCode === 37 && main.photos[at - 1]) { main.show(main.photos[at - 1]); }
      if (event.keyCode === 403) { main.level = 0; }
      if (event.keyCode === 404) { main.hint = "viewer().SetPassepartout(2)"; }   /* decoy */
    };

    $scope.$watch('main.level', function (level, before) {
      if (level !== before) {
        main.viewer().SetShadowDepth(level / 10);              /* call: IMAGEVIEWER.SetShadowDepth */
      }
    });
    $scope.$on('$destroy', angular.noop);
    angular.forEach([display.element], function (element) {
      element.SetAmbientCurve('museum');                       /* call: DISPLAY.SetAmbientCurve */
    });
  }
  MainController.$inject = ['$scope', '$rootScope', 'Photos', 'plugin', 'display'];
  angular.module('gallery').controller('MainController', MainController);
}());
