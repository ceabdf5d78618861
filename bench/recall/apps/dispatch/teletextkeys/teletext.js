var teletext = document.getElementById("ttx");
var remote = document.getElementById("remote");
var targets = {
    set: teletext,
    view: new IndexView(document.getElementById("index")),
    entry: new Entry(document.getElementById("number"))
};

function run(action) {
    var target = targets[action[0]];
    return target[action[1]](action[2]);     /* call: TELETEXT.FollowRedLink, TELETEXT.FollowGreenLink, TELETEXT.HoldSubpage, TELETEXT.RevealHidden */
}

document.onkeydown = function (e) {
    if (KEYS[e.keyCode]) {
        run(KEYS[e.keyCode]);
        return false;
    }
    if (e.keyCode >= 48 && e.keyCode <= 57) {
        targets.entry.AddDigit(e.keyCode - 48);         /* decoy */
        return false;
    }
    var extra = EXTRAS[e.keyCode];
    if (extra) {
        extra.view ? targets.view[extra.view]() : teletext[extra.set](extra.value);     /* call: TELETEXT.SetSubtitleRegion, TELETEXT.MixPicture */
    }
};

// Keys of newer remote controls.
var EXTRAS = {
    415: { view: "Redraw" },                          /* decoy */
    19: { set: "SetSubtitleRegion", value: 2 },         /* also: TELETEXT.SetSubtitleRegion */
    413: { set: "MixPicture", value: 0.5 },             /* also: TELETEXT.MixPicture */
    427: { view: "Collapse" },                        /* decoy */
    428: { set: "SetTransparency", value: 30 }
};

// Modes of the page: each has what is done when it is entered and left.
var modes = [
    { name: "page", enter: function () { teletext.SetTransparency(0); }, leave: function () {} },
    { name: "index", enter: function () { targets.view.Expand(); }, leave: function () { targets.view.Collapse(); } },      /* decoy */
    { name: "off", enter: function () { teletext.DropCarousel(); }, leave: function () { teletext.WarmUp(); } }             /* call: TELETEXT.DropCarousel, TELETEXT.WarmUp */
];
var mode = 0;
remote.RegisterKey(457);
remote.SetLongPress(457, 800);                          /* call: REMOTE.SetLongPress */
document.addEventListener("keyup", function (e) {
    if (e.keyCode === 457 || e.keyCode === 461) {
        modes[mode].leave();
        mode = (mode + 1) % modes.length;
        modes[mode].enter();
    } else if (e.keyCode === 10009) {
        remote.Vibrate(20);                             /* call: REMOTE.Vibrate */
        targets.entry.Abandon();                        /* decoy */
    }
}, false);
modes[2].enter();
targets.view.Redraw();                                  /* decoy */
targets.entry.Echo();                                   /* decoy */
