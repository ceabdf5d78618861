"use strict";
var serial = document.getElementById("serial");
var kob = document.getElementById("kob");
var out = document.getElementById("out"), form = document.getElementById("f");

function line(t) { out.textContent += t + "\n"; }
function attempt(fn) { try { line(fn()); } catch (e) { line(e.message); } }
serial.SetEcho(true);   /* call: SERIALPORT.SetEcho */

form.onsubmit = function (e) {
    e.preventDefault();
    var words = form.elements.cmd.value.split(/\s+/);
    attempt(function () { return serial[words[0]](words[1]); });   /* undecidable: SERIALPORT */
};
form.onclick = function () {
    attempt(function () { return serial["Get" + form.elements.cmd.value](); });   /* undecidable: SERIALPORT */
};
attempt(function () {
    var name = window.prompt("Method?");
    return name && serial[name]();   /* undecidable: SERIALPORT */
});
attempt(function () {
    var last = localStorage.getItem("last") || sessionStorage.last;
    if (last) { kob.Execute(last); }   /* undecidable: KOB */
});
attempt(function () {
    var m = /cmd=(\w+)/.exec(document.cookie);
    if (m) { serial[m[1]](); }   /* undecidable: SERIALPORT */
});
document.addEventListener("paste", function (e) {
    serial[e.clipboardData.getData("text")]();   /* undecidable: SERIALPORT */
});
window.onhashchange = function () {
    var hash = location.hash.slice(1);
    if (hash) { serial[hash].apply(serial, []); }   /* undecidable: SERIALPORT */
};
var own = {};
own[form.elements.cmd.value] = function () { };   /* decoy */
serial["Flush" + "Buffers"]();
document.onkeydown = function (e) {
    if (e.keyCode === 13) { serial.EnterPressed(e.key); }   /* call: SERIALPORT.EnterPressed */
};
