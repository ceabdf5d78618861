container.register("pages", ["guest", "alarm", "launcher", "kitchen"], function (guest, alarm, launch, kitchen) {
    return [
        {
            title: "Welcome",
            text: function () { return "Dear " + guest.name; },
            ok: function () { guest.language("fr"); }
        },
        {
            title: "Wake-up call",
            text: function () { return "at 7"; },
            ok: function () { alarm.wake(7).gently(); }
        },
        {
            title: "Breakfast",
            text: function () { return kitchen.orders.length + " orders"; },
            ok: function () { kitchen.PassArguments("tea", "2"); }       /* decoy */
        },
        {
            title: "Films",
            text: function () { return "OK to start"; },
            ok: function () { launch("films"); }
        },
        {
            title: "Bill",
            text: function () { return guest.bill() + " €"; },
            ok: function () { guest.checkOut(); }
        }
    ];
});

container.register("router", ["pages"], function (pages) {
    var index = 0;
    return {
        current: function () { return pages[index]; },
        move: function (by) { index = (index + by + pages.length) % pages.length; }
    };
});
