// The shell has a bar, and parts in frames. Parts sign on with Attach and are told of keys with OnKey.
var Shell = {
    parts: {},
    Boot: function () {
        var loader = document.getElementById("app");
        loader.LoadApplication("lobby");
        loader.PinApplication("lobby");                             /* call: APPLOADER.PinApplication */
        Shell.SetTitle("Welcome");                                  /* decoy */
        setInterval(function () { Shell.KeepAlive(); }, 80);        /* decoy */
    },
    Attach: function (name, part) {
        Shell.parts[name] = part;
        part.OnAttach(Shell);                                       /* decoy */
    },
    SetTitle: function (text) { document.getElementById("bar").innerHTML = text; },
    Wake: function () { document.getElementById("bar").className = "awake"; },
    KeepAlive: function () {
        document.getElementById("scr").Wake();                      /* call: SCREEN.Wake */
    },
    Restart: function () {
        for (var name in Shell.parts) { Shell.parts[name].OnDetach(); }     /* decoy */
        document.getElementById("app").RestartApplication();        /* call: APPLOADER.RestartApplication */
    }
};

document.onkeydown = function (e) {
    var handled = false;
    for (var name in Shell.parts) {
        handled = Shell.parts[name].OnKey(e.keyCode) || handled;    /* decoy */
    }
    if (handled) { return; }
    if (e.keyCode === 403) { Shell.Wake(); }                        /* decoy */
    if (e.keyCode === 404) {
        document.getElementById("scr").SetTitle("Lobby");           /* call: SCREEN.SetTitle */
    }
    if (e.keyCode === 27) { Shell.Restart(); }                      /* decoy */
};
