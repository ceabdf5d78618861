angular.module('channels')

    .controller('ListController', ['$scope', '$q', 'channelList', 'tuner', 'plugins', 'demoPlugin',
        function ($scope, $q, channelList, tuner, plugins, demoPlugin) {
            var list = this;
            list.channels = [];
            list.current = null;

            channelList.load().then(function (channels) {
                list.channels = channels;
                list.choose(channels[0]);
            });

            list.choose = function (channel) {
                list.current = channel;
                channel.quality = tuner.tune(channel.number);
                $scope.$broadcast('chosen', channel, plugins.get('security'));
            };

            list.key = function (code) {
                if (!list.current) {
                    return;
                }
                if (code >= 49 && code <= 51) {
                    list.choose(list.channels[code - 49]);
                } else if (code === 403) {
                    channelList.rename(list.current, 'Favourite');
                } else if (code === 404) {
                    list.info = tuner.quality();
                } else if (code === 405) {
                    demoPlugin.RenameChannel(1, 'x');           /* decoy */
                    demoPlugin.SetFineTune(1);                  /* decoy */
                } else if (code === 406) {
                    $q.when(plugins.get('channel')).then(function (plugin) {
                        plugin.ExportList('usb');               /* call: CHANNEL.ExportList */
                    });
                }
            };

            $scope.$watch('list.filter', function (text) {
                var plugin = plugins.get('channel');
                if (plugin) {
                    plugin.SetSearchText(text || '');           /* call: CHANNEL.SetSearchText */
                }
            });
        }])

    .controller('LockController', ['$scope', 'plugins', function ($scope, plugins) {
        var lock = this, channel = null;
        lock.state = 'open';

        $scope.$on('chosen', function (event, chosen, security) {
            channel = chosen;
            security.SetActiveChannel(channel.number);          /* call: SECURITY.SetActiveChannel */
        });

        lock.toggle = function () {
            channel.locked = !channel.locked;
            lock.state = channel.locked ? 'locked' : 'open';
            plugins.get('channel')[channel.locked ? 'LockChannel' : 'UnlockChannel'](channel.number);
            plugins.get('security').AuditLock(channel.locked);  /* call: SECURITY.AuditLock */
            angular.forEach(['channel', 'tuner'], function (name) {
                plugins.get(name)[name === 'tuner' ? 'MuteDuringLock' : 'ShowLockIcon'](channel.locked);   /* call: TUNER.MuteDuringLock, CHANNEL.ShowLockIcon */
            });
        };
    }]);
