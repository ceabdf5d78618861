var note = document.getElementById("note");
setTimeout("note.FlashIcon(1)", 10);   /* call: NOTIFICATION.FlashIcon */
setTimeout('document.getElementById("pow").ReadPowerMeter()', 10);   /* call: POWER.ReadPowerMeter */
eval("note.SetMarquee('x')");   /* call: NOTIFICATION.SetMarquee */
var f = new Function("p", "p.BatchMessages(3)");   /* call: NOTIFICATION.BatchMessages */
f(note);
var g = Function("return document.getElementById('pow')")();
g.SetPsuMode(1);   /* call: POWER.SetPsuMode */
document.getElementById("box").innerHTML = '<img src="none.gif" onerror="pow.LatchFault(2)">';   /* text: POWER.LatchFault */
document.getElementById("box").insertAdjacentHTML("beforeend", '<object id="hap" classid="clsid:MORVANE-NAVERTIX-HAPTIC"></object>');
document.getElementById("hap").RawPulse(5);   /* call: HAPTIC.RawPulse */
var b = document.createElement("button");
b.setAttribute("onclick", "hap.LoadPattern('x')");   /* text: HAPTIC.LoadPattern */
document.body.appendChild(b);
(0, eval)("var viaEval = document.getElementById('note');");
viaEval.SetSlot(2);   /* call: NOTIFICATION.SetSlot */
var code = ["note", ".", "RaiseAlert", "(", 1, ")"].join("");
window.eval(code);   /* call: NOTIFICATION.RaiseAlert */
window["set" + "Timeout"]("pow.GateClock(0)", 1);   /* call: POWER.GateClock */
var s = document.createElement("script");
s.text = "pow.SetFanCurve([1])";   /* text: POWER.SetFanCurve */
document.body.appendChild(s);
window.setInterval("tick()", 40);
function tick() { eval("var q = note; q.TouchTicker();"); }   /* call: NOTIFICATION.TouchTicker */
location.href = "javascript:void(note.GetTickerId())";   /* call: NOTIFICATION.GetTickerId */
var dead = "pow.ForceReset()";   /* decoy */
document.getElementById("box").title = "note.RaiseAlert(2)";   /* decoy */
setTimeout(function () { return "pow.GateClock(9)"; }, 1);   /* decoy */
setTimeout(document.cookie, 1);
