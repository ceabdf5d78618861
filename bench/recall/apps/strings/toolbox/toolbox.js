var lamp = document.getElementById("lamp");
var hdmi1 = document.getElementById("hdmi1");
var power1 = document.getElementById("power1");
var at = 0;

function out(text) {
    var line = document.createElement("div");
    line.appendChild(document.createTextNode(String(text)));
    document.getElementById("out").appendChild(line);
    while (document.getElementById("out").childNodes.length > 8) {
        document.getElementById("out").removeChild(document.getElementById("out").firstChild);
    }
}

function draw() {
    var html = "";
    for (var i = 0; i < MACROS.length; i++) {
        html += "<li" + (i == at ? " class='on'" : "") + " onclick='choose(" + i + ")'>" + MACROS[i].title + "</li>";
    }
    document.getElementById("tools").innerHTML = html;
}

function choose(n) {
    at = n;
    out(runMacro(MACROS[at]));
    draw();
}

// A formula of two values, as the protocol of the light says.
var lux = new Function("level", "gain", "lamp.SetIntegrationTime(gain * 10); return level * gain / 3;");   /* text: LIGHTSENSOR.SetIntegrationTime */
out("lux " + lux(lamp.GetLevel(), 2));                                 /* also: LIGHTSENSOR.SetIntegrationTime */

lamp.SetInfraredCut(true);                                             /* call: LIGHTSENSOR.SetInfraredCut */
hdmi1.ReadInfoFrame(1);                                                /* call: HDMI.ReadInfoFrame */
setTimeout("hdmi1.PulseHotplug(1)", 10);                               /* text: HDMI.PulseHotplug */
setInterval("power1.KickWatchdog(); out('.')", 50);                    /* text: POWER.KickWatchdog */

function addButton(title, code) {
    var button = document.createElement("button");
    button.innerHTML = title;
    button.setAttribute("onclick", code);                              /* also: POWER.SetFanSpeed */
    document.body.appendChild(button);
}
addButton("Fan", "power1.SetFanSpeed('low')");                         /* text: POWER.SetFanSpeed */
addButton("Input", "out(hdmi1.GetActiveInput())");

function addScript(text) {
    var script = document.createElement("script");
    script.text = text;                                                /* also: HDMI.ListConnectedSources */
    document.getElementsByTagName("head")[0].appendChild(script);
}
addScript("function inputs() { return hdmi1.ListConnectedSources(); }");   /* text: HDMI.ListConnectedSources */

var template = "<a href=\"javascript:lamp.SetIndicator(1)\" id=\"ind\">Indicator</a>";   /* text: LIGHTSENSOR.SetIndicator */
var holder = document.createElement("div");
holder.innerHTML = template;                                           /* also: LIGHTSENSOR.SetIndicator */
document.body.appendChild(holder);

// What the technician types is run as it is.
function console_(line) {
    var parts = String(line).split(" ");
    if (parts[0] == "power" && typeof power1[parts[1]] == "function") {
        return power1[parts[1]](parts[2]);                             /* undecidable: POWER */
    }
    return HELP[parts[0]] || "?";
}

document.onkeydown = function (e) {
    if (e.keyCode == 38) { at = (at + MACROS.length - 1) % MACROS.length; }
    if (e.keyCode == 40) { at = (at + 1) % MACROS.length; }
    if (e.keyCode == 13) { out(runMacro(MACROS[at])); }
    if (e.keyCode == 403) { inputs(); }
    if (e.keyCode == 404) { out(console_(window.prompt("Command") || "reboot")); }
    if (e.keyCode == 405) { ["lamp", "hdmi1"].forEach(function (n) { window.eval(n + ".RunSelfCheck()"); }); }   /* text: LIGHTSENSOR.RunSelfCheck */
    draw();
};
for (var i = 0; i < MACROS.length; i++) {
    out(runMacro(MACROS[i]));
}
draw();
