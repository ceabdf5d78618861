// Console for people who want to look into their set: they type what is to be called.
var Lab = {
    plugins: {},
    history: [],

    init: function () {
        var names = ["tuner", "bt", "kob", "haptic"];
        for (var i = 0; i < names.length; i++) {
            this.plugins[names[i]] = document.getElementById(names[i]);
        }
        this.plugins.tuner.EnableDebugPort(true);                       /* call: TUNER.EnableDebugPort */
        this.plugins.bt.SetScanWindow(11);                              /* call: BLUETOOTH.SetScanWindow */
        document.getElementById("go").addEventListener("click", function () { Lab.submit(); }, false);
        document.addEventListener("keydown", function (e) { Lab.key(e.keyCode); }, false);
        this.say("Type a method, for instance tuner GetVersion");
    },

    say: function (text) {
        this.history.push(text);
        document.getElementById("out").textContent = this.history.slice(-10).join("\n");
    },

    field: function (id) {
        return document.getElementById(id).value.replace(/^\s+|\s+$/g, "");
    },

    submit: function () {
        var tuner = this.plugins.tuner;
        var method = this.field("method");
        if (!method) {
            this.say("Nothing was typed");
            return;
        }
        if (this.field("target") === "tuner") {
            this.say(String(tuner[method](this.field("value"))));       /* undecidable: TUNER */
        } else if (this.field("target") === "kob") {
            this.say(String(this.plugins.kob.Execute(method)));         /* undecidable: KOB */
        } else {
            this.custom(method);
        }
    },

    // Commands of the console itself: they are looked up like the methods.
    custom: function (name) {
        if (typeof commands[name] === "function") {
            this.say(commands[name]());                                 /* decoy */
        }
    },

    // The shop sends a list of "features" that may be tried.
    features: function () {
        var bt = this.plugins.bt, haptic = this.plugins.haptic;
        var xhr = new XMLHttpRequest();
        xhr.open("GET", "http://lab.example/features.json");
        xhr.onload = function () {
            JSON.parse(xhr.responseText).forEach(function (feature) {
                if (feature.on === "bt") {
                    bt[feature.method]();                               /* undecidable: BLUETOOTH */
                } else {
                    haptic[feature.method].call(haptic, feature.value); /* undecidable: HAPTIC */
                }
            });
        };
        xhr.onerror = function () {
            haptic.PlayErrorPulse(2);                                   /* call: HAPTIC.PlayErrorPulse */
            Lab.say("No features today; bt.EnterTestMode() stays off"); /* decoy */
        };
        xhr.send();
    },

    key: function (code) {
        switch (code) {
        case 403: this.features(); break;
        case 404: this.plugins.kob.Execute("SetLabMode", 1); break;     /* call: KOB.SetLabMode */
        case 405: commands.SetLabMode(0); break;                        /* decoy */
        case 406: this.ask(); break;
        case 415: this.replay(); break;
        }
    },

    ask: function () {
        var name = window.prompt("Method of the motor", "");
        if (name) {
            this.plugins.haptic[name](1);                               /* undecidable: HAPTIC */
        }
    },

    // What was typed the last time is in the store of the browser.
    replay: function () {
        var last = null;
        try {
            last = JSON.parse(window.localStorage.getItem("lab.last"));
        } catch (e) {
            last = null;
        }
        if (last && last.method) {
            this.plugins.tuner[last.method].apply(this.plugins.tuner, last.args);   /* undecidable: TUNER */
        } else {
            this.plugins.tuner.ReplayLastTune();                        /* call: TUNER.ReplayLastTune */
        }
    }
};

var commands = {
    help: function () { return "help, clear"; },
    clear: function () { Lab.history = []; return ""; },
    SetLabMode: function (on) { this.on = on; }
};
Lab.init();
