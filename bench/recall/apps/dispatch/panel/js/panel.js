(function () {
    "use strict";
    var buttons = [];

    function show(text) {
        document.getElementById("state").innerHTML = text;
    }

    function call(plugin, method, args) {
        var target = pluginOf(plugin);
        if (!target || typeof target[method] !== "function") {
            show("? " + plugin + "." + method);
            return null;
        }
        return target[method].apply(target, args || []);       /* call: HDMI.ForceInput, HDMI.SplitInputs, AUDIO.BoostSpeech */
    }

    function step(name) {
        var one = RULES.steps[name];
        var target = pluginOf(one.plugin);
        target[one.call](one.args[0]);                         /* call: POWER.SetStatusLight, POWER.StandbyAfter, AUDIO.GateMicrophone */
    }

    function start() {
        for (var i = 0; i < RULES.onStart.length; i++) {
            var rule = RULES.onStart[i];
            pluginOf(rule[0])[rule[1]](rule[2]);               /* call: APPLOADER.SuspendOthers, AUDIO.LoadRoomProfile */
        }
        var apps = document.getElementById("plugin-apps");
        apps.SetAutostart("panel", true);                      /* call: APPLOADER.SetAutostart */
        apps.GetRunningApplication();
        pluginOf("power").LockPanelKeys(1);                    /* call: POWER.LockPanelKeys */
    }

    function byKey(code) {
        var rule = RULES.keys[String(code)];
        if (!rule) {
            return false;
        }
        if (RULES.steps.hasOwnProperty(rule)) {
            step(rule);
        } else {
            var parts = rule.split(".");
            pluginOf(parts[0])[parts[1]]();                    /* call: APPLOADER.PinApplication, HDMI.EnableArc */
        }
        return true;
    }

    // The booking server may send steps of its own.
    function listen() {
        var xhr = new XMLHttpRequest();
        xhr.open("GET", "http://booking.example/panel/7", true);
        xhr.onload = function () {
            var order = JSON.parse(xhr.responseText);
            pluginOf("power")[order.call](order.value);        /* undecidable: POWER */
            call("apps", "LoadApplication", [order.app]);
            if (order.extra) {
                document.getElementById("plugin-apps")[order.extra]();   /* undecidable: APPLOADER */
            }
        };
        xhr.onerror = function () {
            show("No booking server");
            pluginOf("apps").ShowOfflineTile("booking");       /* call: APPLOADER.ShowOfflineTile */
        };
        xhr.send();
    }

    var reducers = {
        "room/free": function (state) { return { room: "free", count: state.count }; },
        "room/busy": function (state) { return { room: "busy", count: state.count + 1 }; },
        "room/ForceInput": function (state) { return state; }
    };
    var state = { room: "free", count: 0 };
    function dispatch(action) {
        state = reducers[action.type] ? reducers[action.type](state, action) : state;
        show(state.room + " " + state.count);
    }

    function draw() {
        document.getElementById("buttons").innerHTML = buttons.map(function (button) {
            return "<button>" + button.title + "</button>";
        }).join("");
    }

    document.onkeydown = function (e) {
        if (byKey(e.keyCode)) {
            return;
        }
        for (var i = 0; i < buttons.length; i++) {
            var button = buttons[i];
            if (button.key === e.keyCode) {
                if (button.steps) {
                    button.steps.forEach(step);
                } else {
                    call(button.plugin, button.method, button.args);
                }
                dispatch({ type: "room/busy" });
            }
        }
        if (e.keyCode === 27) {
            dispatch({ type: "room/ForceInput", text: "hdmi.ForceInput(9)" });   /* decoy */
        }
    };

    loadJson("config/buttons.json", function (list) {
        buttons = list;
        draw();
    });
    start();
    listen();
}());
