(function () {
    var id = function (name) { return document.getElementById(name); };
    var services = [new Service({ number: 1, name: "One" }), new PayService({ number: 7, name: "Film" }),
        new Service({ number: 9, name: "Kids" })];
    var receiver = new Receiver({ device: id("bc") }), mirror = new Mirror({ device: secondRoom });
    var banner = new Banner({ el: id("banner"), model: receiver });
    var subtitles = new SubtitleView({ el: id("sub") });
    var list = new ListView({ el: id("list"), services: services });
    var menu = new MenuView({ el: id("menu"), list: list, receiver: receiver, extension: id("kob") });
    var entry = 0;

    services[1].Lock();                                         /* decoy */
    services[2].Rename("Children");                             /* decoy */
    list.Paint();                                               /* decoy */

    var tasks = {
        // Execute of our own: tasks of the page, by name.
        known: { RebuildIndex: function () { list.Paint(); }, ClearHistory: function () { secondRoom.Forget(); } },     /* decoy */
        Execute: function (name) { return this.known[name] && this.known[name](); }
    };
    tasks.Execute("RebuildIndex");                              /* decoy */

    function zap() {
        var service = list.Current();                           /* decoy */
        receiver.set("service", service);
        mirror.set("service", service);
    }

    document.onkeydown = function (e) {
        switch (e.keyCode) {
        case 33: list.Move(1); zap(); break;                    /* decoy */
        case 34: list.Move(-1); zap(); break;                   /* decoy */
        case 38: banner.Slide("up"); break;                     /* decoy */
        case 40: subtitles.Slide("down"); break;
        case 403: subtitles.Announce(true); break;
        case 404: menu.choose(entry++ % MENU.length); menu.choose(entry++ % MENU.length); menu.choose(3); break;
        case 405: services[1].Pay(); services[0].Promote(); break;      /* decoy */
        case 406: tasks.Execute("ClearHistory"); break;         /* decoy */
        case 13: menu.choose(4); break;
        case 415: id("bc").Rename(1, "Prime"); break;           /* call: BROADCAST.Rename */
        case 413: id("kob").Execute("FreezeFrame"); break;      /* call: KOB.FreezeFrame */
        case 19: id("sub").Remember("language"); break;         /* call: SUBTITLE.Remember */
        case 27: receiver.Standby(); mirror.Standby(); break;   /* decoy */
        }
    };
    zap();
}());
