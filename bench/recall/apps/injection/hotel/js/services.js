["account", "locale", "clock", "apps"].forEach(function (name) {
    container.register(name + "Plugin", [], function () {
        return document.getElementById("p-" + name);
    });
});

container.register("guest", ["accountPlugin", "localePlugin"], function (account, locale) {
    var name = account.GetUserName();
    account.SetSessionLength(72);                                       /* call: ACCOUNT.SetSessionLength */
    return {
        name: name,
        language: function (code) {
            locale.SetLanguage(code);
            locale.SetKeyboardHint(code);                               /* call: LOCALE.SetKeyboardHint */
        },
        bill: function () {
            return account.GetOpenBalance();                            /* call: ACCOUNT.GetOpenBalance */
        },
        checkOut: function () {
            account.SignOut();
            account.EraseTraces();                                      /* call: ACCOUNT.EraseTraces */
        }
    };
});

container.register("alarm", ["clockPlugin"], function (clock) {
    function Alarm() {
        this.plugin = clock;
    }
    Alarm.prototype.wake = function (hour) {
        this.plugin.SetAlarm(hour);
        this.plugin.SetAlarmRepeat("weekdays");                         /* call: CLOCK.SetAlarmRepeat */
        return this;
    };
    Alarm.prototype.gently = function () {
        this.plugin.SetAlarmRamp(60);                                   /* call: CLOCK.SetAlarmRamp */
        return this;
    };
    return new Alarm();
});

container.register("launcher", ["appsPlugin", "guest"], function (apps, guest) {
    return function launch(id) {
        apps.LoadApplication(id);
        apps.PassArguments(id, guest.name);                             /* call: APPLOADER.PassArguments */
        apps.BringToFront(id);                                          /* call: APPLOADER.BringToFront */
    };
});

// In the test of the kitchen, guests are made of paper.
container.value("paperGuest", {
    plugin: { GetOpenBalance: function () { return 0; }, EraseTraces: function () {} },
    leave: function () {
        this.plugin.EraseTraces(this.plugin.GetOpenBalance());          /* decoy */
    }
});

container.run(["paperGuest"], function (guest) { guest.leave(); });

container.register("kitchen", [], function () {
    return { orders: [], PassArguments: function (id, what) { this.orders.push(id + what); } };
});
