angular.module('gallery', ['tv'])
  .constant('FOLDERS', { photos: '/usb/photos', cache: '/cache' })
  .config(['pluginProvider', function (pluginProvider) {
    pluginProvider.map('viewer', 'viewer');
    pluginProvider.map('files', 'store');
  }])
  .run(['plugin', '$rootScope', function (plugin, $rootScope) {
    plugin('files').MountMedia('usb');                         /* call: FILESTORE.MountMedia */
    $rootScope.$on('photo', function (event, photo) {
      plugin('viewer').PreloadNext(photo.name);                /* call: IMAGEVIEWER.PreloadNext */
    });
  }]);
