(function (ko) {
    'use strict';

    var plugin = {
        clock: document.getElementById('clock'),
        power: document.getElementById('power'),
        audio: document.getElementById('audio')
    };

    function Alarm(hour, minute) {
        var self = this;
        self.hour = ko.observable(hour);
        self.minute = ko.observable(minute);
        self.active = ko.observable(true);
        self.label = ko.computed(function () {
            return ('0' + self.hour()).slice(-2) + ':' + ('0' + self.minute()).slice(-2);
        });
        self.active.subscribe(function (on) {
            plugin.clock[on ? 'ArmAlarm' : 'DisarmAlarm'](self.label());            /* call: CLOCK.ArmAlarm, CLOCK.DisarmAlarm */
        });
    }

    ko.bindingHandlers.fade = {
        init: function (element) {
            plugin.audio.CreateRamp('wake');                                        /* call: AUDIO.CreateRamp */
            element.style.height = '4px';
        },
        update: function (element, valueAccessor) {
            var value = ko.unwrap(valueAccessor());
            plugin.audio.SetRampLength(value);                                      /* call: AUDIO.SetRampLength */
            element.style.width = value + 'px';
        }
    };

    ko.extenders.persisted = function (target, name) {
        target.subscribe(function (value) {
            plugin.power.StoreWakeSetting(name, value);                             /* call: POWER.StoreWakeSetting */
        });
        return target;
    };

    function ViewModel() {
        var self = this;
        self.alarms = ko.observableArray([new Alarm(6, 30), new Alarm(9, 0)]);
        self.volume = ko.observable(10).extend({ persisted: 'volume' });
        self.ramp = ko.observable(30);

        self.heading = ko.pureComputed(function () {
            var active = self.alarms().filter(function (a) { return a.active(); });
            return active.length + ' of ' + self.alarms().length + ' alarms';
        });

        self.add = function () {
            self.alarms.push(new Alarm(7, 15));
            plugin.clock.AllocateAlarmSlot(self.alarms().length);                   /* call: CLOCK.AllocateAlarmSlot */
        };

        self.remove = function (alarm) {
            self.alarms.remove(alarm);
            plugin.clock.FreeAlarmSlot(alarm.label());                              /* call: CLOCK.FreeAlarmSlot */
        };

        self.volume.subscribe(function (v) {
            plugin.audio.SetVolume(v);
            plugin.audio.SetWakeVolume(v);                                          /* call: AUDIO.SetWakeVolume */
        });

        ko.computed(function () {
            if (self.alarms().length) {
                plugin.power.KeepClockPowered(true);                                /* call: POWER.KeepClockPowered */
            }
        });
    }

    var model = new ViewModel();
    ko.applyBindings(model);

    // A model without a set, for the designers.
    var designer = { clock: { ArmAlarm: ko.observable(), FreeAlarmSlot: function () {} } };
    designer.clock.ArmAlarm('07:00');                                               /* decoy */
    ko.utils.arrayForEach([1, 2], function (n) { designer.clock.FreeAlarmSlot(n); });   /* decoy */

    document.onkeydown = function (e) {
        if (e.keyCode === 38) {
            model.volume(model.volume() + 1);
        } else if (e.keyCode === 40) {
            model.volume(model.volume() - 1);
        } else if (e.keyCode === 403) {
            model.ramp(model.ramp() + 10);
        } else if (e.keyCode === 404) {
            model.alarms()[0].active(!model.alarms()[0].active());
        } else if (e.keyCode === 405) {
            ko.utils.objectForEach(plugin, function (name, node) {
                if (name === 'power') {
                    node.TestWakeCircuit();                                         /* call: POWER.TestWakeCircuit */
                }
            });
        }
    };
}(ko));
