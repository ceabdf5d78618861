angular.module('channels', [])

    .factory('plugins', function () {
        var nodes = {};
        return {
            add: function (name, node) { nodes[name] = node; },
            get: function (name) { return nodes[name]; }
        };
    })

    .service('tuner', ['plugins', function (plugins) {
        this.tune = function (number) {
            var tuner = plugins.get('tuner');
            tuner.SetChannel(number);
            tuner.SetFineTune(0);                               /* call: TUNER.SetFineTune */
            return tuner.GetSignalQuality();
        };
        this.quality = function () {
            return plugins.get('tuner').GetLockTime();          /* call: TUNER.GetLockTime */
        };
    }])

    .provider('channelList', function () {
        var order = 'number';
        this.orderBy = function (value) { order = value; return this; };
        this.$get = ['plugins', '$q', '$timeout', function (plugins, $q, $timeout) {
            return {
                load: function () {
                    return $timeout(function () {
                        var plugin = plugins.get('channel'), i, list = [];
                        plugin.SetListFilter('tv', order);      /* call: CHANNEL.SetListFilter */
                        for (i = 1; i <= 3; i++) {
                            list.push({ number: i, name: 'Channel ' + i, locked: false });
                        }
                        return $q.when(list);
                    }, 1);
                },
                rename: function (channel, name) {
                    channel.name = name;
                    plugins.get('channel').RenameChannel(channel.number, name);   /* call: CHANNEL.RenameChannel */
                }
            };
        }];
    })

    .value('demoPlugin', { RenameChannel: angular.noop, SetFineTune: angular.noop })

    .config(['channelListProvider', function (provider) {
        provider.orderBy('name');
    }]);
