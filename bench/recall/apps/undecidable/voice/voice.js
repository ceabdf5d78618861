(function () {
    "use strict";

    var microphone = document.getElementById("mic");
    var transcript = document.getElementById("transcript");
    var own = {};

    function write(text) {
        var p = document.createElement("p");
        p.appendChild(document.createTextNode(text));
        transcript.appendChild(p);
    }

    function understand(text) {
        for (var i = 0; i < GRAMMAR.length; i++) {
            var rule = GRAMMAR[i], match = rule.pattern.exec(text);
            if (match) {
                var plugin = document.getElementById(rule.plugin);
                plugin[rule.method](match[1]);      /* call: CHANNEL.SetChannelByName, AUDIO.EnableWhisperMode, CHANNEL.SpeakProgramme */
                return true;
            }
        }
        return own[text] ? own[text]() : false;
    }

    function listen() {
        microphone.Open();
        microphone.SetWakeWord("hello television"); /* call: MICROPHONE.SetWakeWord */
        microphone.StartCapture();
        microphone.StreamTo("wss://speech.example/", onWord);   /* call: MICROPHONE.StreamTo */
    }

    function onWord(text) {
        write(text);
        if (!understand(String(text)) && typeof text === "string") {
            ask(text);
        }
    }

    // What the set does not understand, the speech service does. It answers with what is to be called.
    function ask(text) {
        var request = new XMLHttpRequest();
        request.open("GET", "https://speech.example/intent?q=" + encodeURIComponent(text));
        request.onload = function () {
            var intent = JSON.parse(request.responseText);
            if (intent.target === "sound") {
                var sound = document.getElementById("snd");
                sound[intent.action](intent.value);         /* undecidable: AUDIO */
            } else if (intent.target === "channel") {
                document.getElementById("chn")[intent.action].call(document.getElementById("chn"), intent.value);   /* undecidable: CHANNEL */
            }
        };
        request.onerror = function () {
            microphone.PlayFailureTone();           /* call: MICROPHONE.PlayFailureTone */
        };
        request.send();
    }

    // The speech service can also teach words, by a script that it sends.
    window.teach = function (word, plugin, method) {
        own[word] = function () {
            var p = document.getElementById(plugin === "sound" ? "snd" : "chn");
            return p[method]();                     /* undecidable: AUDIO */
        };
    };

    var typed = document.getElementById("typed");
    typed.onchange = function () {
        var words = typed.value.split(" ");
        if (words[0] === "sound" && words[1]) {
            document.getElementById("snd")[words[1]](words[2]);     /* undecidable: AUDIO */
        } else if (typed.value) {
            understand(typed.value);
        }
    };

    var robot = { SpeakProgramme: function () { write("robot"); }, PlayFailureTone: function () {} };

    document.onkeydown = function (e) {
        if (e.keyCode === 403) {
            DEMO.forEach(understand);
        } else if (e.keyCode === 404) {
            ask("make it warmer");
        } else if (e.keyCode === 405) {
            robot.SpeakProgramme();                 /* decoy */
            robot.PlayFailureTone();                /* decoy */
        } else if (e.keyCode === 406) {
            document.getElementById("mic").ForgetVoices();      /* call: MICROPHONE.ForgetVoices */
        }
    };

    listen();
}());
