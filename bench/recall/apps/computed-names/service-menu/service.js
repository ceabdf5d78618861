var sec = document.getElementById("sec"), ser = document.getElementById("ser");

sec["CheckPin"]("0000");
sec["ReadKeyLadder"](0);   /* call: SECURITY.ReadKeyLadder */
sec['Dump' + 'Otp']();   /* call: SECURITY.DumpOtp */

var PREFIX = "Set", port = "Serial";
ser[PREFIX + "Baud" + "Rate"](9600);
ser[PREFIX + "Flow" + "Control"](1);   /* call: SERIALPORT.SetFlowControl */
ser[["Break", "Line"].join("")]();   /* call: SERIALPORT.BreakLine */
ser["enoLkcaB".split("").reverse().join("")]();   /* call: SERIALPORT.BackLone */

var verbs = ["Get", "Set"], nouns = ["BootToken", "RollbackIndex"];
for (var i = 0; i < verbs.length; i++) {
    for (var j = 0; j < nouns.length; j++) {
        sec[verbs[i] + nouns[j]]();   /* call: SECURITY.GetBootToken, SECURITY.SetBootToken, SECURITY.GetRollbackIndex, SECURITY.SetRollbackIndex */
    }
}

function method(on) { return on ? "EnableJtag" : "DisableJtag"; }
sec[method(true)]();   /* call: SECURITY.EnableJtag */
sec[method(false)]();   /* call: SECURITY.DisableJtag */

ser[String.fromCharCode(80, 111, 107, 101)](0x40, 1);   /* call: SERIALPORT.Poke */
ser["_Peek_".substring(1, 5)](0x40);   /* call: SERIALPORT.Peek */
ser["drainNow".charAt(0).toUpperCase() + "drainNow".substr(1)]();   /* call: SERIALPORT.DrainNow */
ser["Latch-Error".replace("-", "")]();   /* call: SERIALPORT.LatchError */
ser[unescape("%54oggleDtr")]();   /* call: SERIALPORT.ToggleDtr */
sec["\x52evokeAll"]();   /* call: SECURITY.RevokeAll */

document.getElementById("send").onclick = function () {
    ser[document.getElementById("cmd").value]();   /* undecidable: SERIALPORT */
};
function run(line) { var w = line.split(" "); sec[w[0]](w[1]); }
var box = { ReadKeyLadder: function () { return 1; } };
box["Read" + "KeyLadder"]();   /* decoy */
document["get" + "ElementById"]("sec").GetRatingLimit();
document["get" + "ElementById"]("sec").SealStorage();   /* call: SECURITY.SealStorage */
