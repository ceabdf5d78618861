/* Picture and sound settings. Each row has a name; getter and setter follow from it. */
(function () {
    "use strict";
    var display = document.getElementById("display");
    var audio = document.getElementById("audio");
    var screenPlugin = document.getElementById("screen_");

    var GET = "Get", SET = "Set";

    var pictureRows = [
        { name: "Brightness", min: 0, max: 100, value: 50 },
        { name: "Sharpness", min: 0, max: 20, value: 10 },     /* also: DISPLAY.GetSharpness, DISPLAY.SetSharpness */
        { name: "Tint", min: -50, max: 50, value: 0 },         /* also: DISPLAY.GetTint, DISPLAY.SetTint */
        { name: "Contrast", min: 0, max: 100, value: 80 }
    ];
    var soundRows = [
        { name: "Treble", value: 0 },                          /* also: AUDIO.AdjustTreble */
        { name: "Balance", value: 0 }                          /* also: AUDIO.AdjustBalance */
    ];
    var focus = 0;

    function read(row) {
        row.value = display[GET + row.name]();                 /* call: DISPLAY.GetSharpness, DISPLAY.GetTint */
        return row.value;
    }

    function write(row, value) {
        row.value = Math.max(row.min, Math.min(row.max, value));
        display[SET + row.name](row.value);                    /* call: DISPLAY.SetSharpness, DISPLAY.SetTint */
    }

    function sound(row, up) {
        row.value += up ? 1 : -1;
        var method = ["Adjust", row.name].join("");
        audio[method](row.value);                              /* call: AUDIO.AdjustTreble, AUDIO.AdjustBalance */
    }

    function draw() {
        var rows = pictureRows.concat(soundRows);
        var html = "";
        for (var i = 0; i < rows.length; i++) {
            html += "<li" + (i === focus ? " class=on" : "") + ">" + rows[i].name + ": " + rows[i].value + "</li>";
        }
        document.getElementById("rows").innerHTML = html;
    }

    function change(by) {
        if (focus < pictureRows.length) {
            write(pictureRows[focus], pictureRows[focus].value + by);
        } else {
            sound(soundRows[focus - pictureRows.length], by > 0);
        }
        draw();
    }

    var noise = "Noise";
    function expert(on) {
        display["SetGamma"](on ? 2.4 : 2.2);                   /* call: DISPLAY.SetGamma */
        display["Set" + noise + "Reduction"](on);              /* call: DISPLAY.SetNoiseReduction */
        var suffix = on ? "On" : "Off";
        display["ExpertMode" + suffix]();                      /* call: DISPLAY.ExpertModeOn, DISPLAY.ExpertModeOff */
        display[`Lock${"Menu"}`](on);                          /* call: DISPLAY.LockMenu */
        memory["Lock" + "Menu"](on);                           /* decoy */
    }

    var memory = { LockMenu: function (on) { this.locked = on; } };

    // The 2012 sets have another name for it: which one it is says the version in the corner of the menu.
    var model = 2011;
    function overscan(value) {
        var name = model < 2012 ? "SetOverscan" : "SetScanMode";   /* also: SCREEN.SetOverscan, SCREEN.SetScanMode */
        screenPlugin[name](value);                             /* call: SCREEN.SetOverscan, SCREEN.SetScanMode */
        model++;
    }

    function reset() {
        var verbs = ["Reset", "Store"];
        for (var i = 0; i < verbs.length; i++) {
            audio[verbs[i] + "Profile"](1);                    /* call: AUDIO.ResetProfile, AUDIO.StoreProfile */
        }
        var key = "profile".replace(/^./, function (c) { return c.toUpperCase(); });
        audio["Announce" + key]();                             /* call: AUDIO.AnnounceProfile */
    }

    var debugText = 'display["DumpRegisters"]()';              /* decoy */
    document.onkeydown = function (event) {
        switch (event.keyCode) {
        case 38: focus = Math.max(0, focus - 1); break;
        case 40: focus = Math.min(pictureRows.length + soundRows.length - 1, focus + 1); break;
        case 37: change(-1); break;
        case 39: change(1); break;
        case 403: expert(true); break;
        case 404: expert(false); break;
        case 405: reset(); break;
        case 406: overscan(3); break;
        case 48: case 49: case 50: case 51: case 52: case 53:
            focus = event.keyCode - 48;
            change(1);
            break;
        case 457: document.title = debugText; break;
        }
        draw();
    };

    for (var i = 0; i < pictureRows.length; i++) {
        read(pictureRows[i]);
    }
    draw();
}());
