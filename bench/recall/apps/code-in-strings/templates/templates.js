function tpl(id) {
    var src = "var out='';with(o){out+='" + document.getElementById(id).innerHTML.replace(/\n/g, " ").replace(/'/g, "\\'")
        .replace(/(?:<|&lt;)%=\s*(\w+)\s*%(?:>|&gt;)/g, "'+$1+'") + "'}return out;";
    return new Function("o", src);
}
document.getElementById("rows").innerHTML = [1, 2].map(function (n) { return tpl("row")({ n: n }); }).join("");

var area = document.getElementById("area");
area.innerHTML = "<button id='k' onclick='cry.EnrolKey(1)'>k</button>";   /* text: CRYPTO.EnrolKey */
area.firstChild.insertAdjacentHTML("afterend", `<button onclick="cry.RetireKey('${"k1"}')">r</button>`);   /* text: CRYPTO.RetireKey */
var parsed = new DOMParser().parseFromString('<p onclick="cry.ParsedKey()">p</p>', "text/html");
document.body.appendChild(document.adoptNode(parsed.body.firstChild));   /* text: CRYPTO.ParsedKey */
var div = document.createElement("div");
div.onclick = new Function("event", "cry.PressAt(event.clientX)");   /* text: CRYPTO.PressAt */
area.appendChild(div);
var rules = { "n > 0": "cry.AllowRule(n)", "n > 9": "cry.Verify(n)" };   /* text: CRYPTO.AllowRule */
Object.keys(rules).forEach(function (cond) { var n = 1; if (eval(cond)) { eval(rules[cond]); } });
var lines = ["var p = document.getElementById('cry');", "p.SignBatch(2);", "p.GetRandomBytes(1);"];   /* text: CRYPTO.SignBatch */
new Function(lines.join("\n"))();
(function () {}).constructor("cry.ViaConstructor()")();   /* text: CRYPTO.ViaConstructor */
setTimeout("cry." + "Delayed" + "Sign()", 1);   /* text: CRYPTO.DelayedSign */
setInterval('if (typeof once == "undefined") { once = 1; cry.PulseKey(); }', 5);   /* text: CRYPTO.PulseKey */
var fn = eval("(function (p) { return p.FromEval(); })");   /* text: CRYPTO.FromEval */
fn(document.getElementById("cry"));
var blob = URL.createObjectURL(new Blob(["cry.FromBlob(1)"], { type: "text/javascript" }));   /* text: CRYPTO.FromBlob */
var s = document.createElement("script");
s.src = blob;
document.head.appendChild(s);
var tag = document.createElement("script");
tag.appendChild(document.createTextNode("cry.FromNode()"));   /* text: CRYPTO.FromNode */
document.head.appendChild(tag);
var img = new Image();
img.onerror = Function("cry.OnBrokenImage()");   /* text: CRYPTO.OnBrokenImage */
img.src = "none.png";
var help = "call cry.EnrolKey(2)";   /* decoy */
area.setAttribute("data-code", "cry.RetireKey(3)");   /* decoy */
document.createElement("p").textContent = "<b onclick='cry.PressAt(0)'>";   /* decoy */
var xhr = new XMLHttpRequest();
xhr.open("GET", "http://ads.example/run.js");
xhr.onload = function () { if (xhr.status === 200) { eval(xhr.responseText); } };
xhr.send();
