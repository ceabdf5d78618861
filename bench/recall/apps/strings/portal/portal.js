// Portal, first written for the sets of 2009. Do not change the menu without the call centre.
var selected = 0;
var clockTimer;

function Item(label, code) {
  this.label = label;
  this.code = code;
}

function obj(id) {
  if (document.all) return document.all[id];
  return document.getElementById(id);
}

function start() {
  drawMenu();
  clockTimer = setInterval("updateClock()", 60000);
  setTimeout("obj('net').SetPortalAddress('portal.example')", 20);   /* text: NETWORK.SetPortalAddress */
  setTimeout("checkMail(" + 5 + ")", 30);
  updateClock();
  showFavourites(3);
  fromAddress();
}

function updateClock() {
  var d = new Date();
  window.status = d.getHours() + ":" + d.getMinutes();
}

function drawMenu() {
  var html = "";
  for (var i = 0; i < menuItems.length; i++) {
    html += "<TR><TD" + (i == selected ? " BGCOLOR='#0000AA'" : "") + " onclick='choose(" + i + ")'>" + menuItems[i].label + "</TD></TR>";
  }
  obj("menu").innerHTML = html;
}

function choose(i) {
  selected = i;
  eval(menuItems[i].code);
  drawMenu();
}

function openMail() {
  obj("content").innerHTML = "<INPUT ID='to' onfocus='kbd.Show(); kbd.SetPrediction(\"mail\")' onblur='kbd.Hide()'>" +   /* text: KEYBOARD.SetPrediction */
    "<BUTTON onclick='sendMail(\"" + escape("hello") + "\")'>Send</BUTTON>";
}

function sendMail(text) {
  var f = new Function("n", "t", "return n.QueueMessage(t);");   /* text: NETWORK.QueueMessage */
  f(obj("net"), unescape(text));
  eval("obj('kbd').ResetPrediction()");   /* text: KEYBOARD.ResetPrediction */
}

function checkMail(minutes) {
  var n = obj("net");
  n.PollServer("mail", minutes);   /* call: NETWORK.PollServer */
}

function showFavourites(n) {
  var links = "";
  for (var i = 1; i <= n; i++) {
    links += '<SPAN onclick="player.Open(\'fav' + i + '\'); player.ShowStationLogo(' + i + ')">' + i + "</SPAN> ";   /* text: PLAYER.ShowStationLogo */
  }
  obj("content").innerHTML = links + "<PRE>power.SetLogo(1)</PRE>";   /* decoy */
}

// The call centre sends a line of script with the address: portal?do=SetStandby
function fromAddress() {
  var m = /[?&]do=(\w+)/.exec(location.search);
  if (m) {
    obj("power")[m[1]]();   /* undecidable: POWER */
  }
}

function goodNight() {
  var p = obj("power");
  p.SetLampTimer(10);   /* call: POWER.SetLampTimer */
  p["SetStandby"](1);
}

function handleKey(event) {
  var code = event.keyCode;
  if (code == 38 && selected > 0) selected--;
  else if (code == 40 && selected < menuItems.length - 1) selected++;
  else if (code == 13) choose(selected);
  else if (code >= 49 && code <= 52) choose(code - 49);
  else if (code == 403 || code == 405) eval("power." + (selected ? "DimLogo" : "LightLogo") + "()");   /* text: POWER.DimLogo, POWER.LightLogo */
  else if (code == 404) selected = 0;
  else return;
  drawMenu();
}

var help = "To switch the logo off, write power.DimLogo() or net.RenewLease() in the console.";   /* decoy */
