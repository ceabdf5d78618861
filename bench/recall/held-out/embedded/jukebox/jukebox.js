var records = [
  { a: "Blue hour", b: "Red dust", artist: "The Lanterns" },
  { a: "Run, river", b: "Slow train", artist: "Ada & the Gears" },
  { a: "Paper moon walk", b: "Night bus", artist: "Velour" }
];
var queue = [], credits = 3, at = 0;

function embedNamed(name) {
  if (document.embeds) {
    for (var i = 0; i < document.embeds.length; i++) {
      if (document.embeds[i].getAttribute("name") == name) { return document.embeds[i]; }
    }
  }
  return document.getElementById(name);
}

// Made when a coin falls in
function makeHaptic() {
  var o = document.createElement("object");
  o.id = "jukeHaptic";
  o.setAttribute("classid", "clsid:MORVANE-NAVERTIX-HAPTIC");
  document.getElementById("holder").appendChild(o);
  return o;
}

function loadFont() {
  var font = document.getElementById("jukeFont");
  font.LoadFont("neon.ttf");
  font.SetGlowColor("#f0f");                            /* call: FONT.SetGlowColor */
  font.PreRasterize("ABCDEFGHIJKLMNOPQRSTUVWXYZ", 40);  /* call: FONT.PreRasterize */
}

function draw() {
  var html = "";
  for (var i = 0; i < records.length; i++) {
    html += "<p>" + (i == at ? "* " : "") + records[i].artist + ": " + records[i].a + " / " + records[i].b + "</p>";
  }
  document.getElementById("records").innerHTML = html + "<p>Credits: " + credits + "</p>";
}

function coin() {
  var buzz = document.getElementById("jukeHaptic") || makeHaptic();
  credits++;
  buzz.Play("coin");
  buzz.PlayCoinDrop(credits);                           /* call: HAPTIC.PlayCoinDrop */
  document.getElementById("jukeStorage").SetItem("credits", credits);
  document.getElementById("jukeStorage").FlushToDisk(); /* call: STORAGE.FlushToDisk */
  draw();
}

function choose(side) {
  if (credits < 1) { return; }
  credits--;
  queue.push(records[at][side]);
  arm.LowerArm();                                       /* decoy */
  if (queue.length == 1) { playNext(); }
  draw();
}

function playNext() {
  var player = embedNamed("jukePlayer"), title = queue[0];
  if (!title) { return; }
  player.Open("records/" + title + ".mp3");
  player.SetCrossfade(2);                               /* call: PLAYER.SetCrossfade */
  player.LowerArm();                                    /* call: PLAYER.LowerArm */
  player.Play();
  setTimeout(function () {
    queue.shift();
    document.embeds["jukePlayer"].Scratch(1);           /* call: PLAYER.Scratch */
    playNext();
  }, 60);
}

// The arm on the picture
var arm = {
  angle: 0,
  LowerArm: function () { this.angle = 30; },
  Scratch: function () { this.angle = 31; }
};

function statistics() {
  var objects = document.getElementsByTagName("object"), n = 0;
  for (var i = 0; i < objects.length; i++) {
    if (objects[i].id == "jukeStorage") {
      n = objects[i].CountReads();                      /* call: STORAGE.CountReads */
    }
  }
  arm.Scratch();                                        /* decoy */
  document.title = n + " reads. <embed name=x> x.SpinDisc()";     /* decoy */
}

document.onkeydown = function (e) {
  switch (e.keyCode) {
    case 38: at = Math.max(0, at - 1); draw(); break;
    case 40: at = Math.min(records.length - 1, at + 1); draw(); break;
    case 403: coin(); break;
    case 404: choose("a"); break;
    case 405: choose("b"); break;
    case 457: statistics(); break;
    case 413:
      var lid = document.getElementById("holder");
      lid.innerHTML = '<embed id="jukeLid" classid="clsid:MORVANE-NAVERTIX-SERIALPORT" hidden="true">';
      lid.firstChild.OpenLid();                         /* call: SERIALPORT.OpenLid */
      break;
  }
};
loadFont();
draw();
