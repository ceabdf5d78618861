var trailers = new Array("http://promo.example/t1.wmv", "http://promo.example/t2.wmv");
var teaser = new Image();
var current = -1;
var creditTimer;
var screenW = 960;

function writePlugin(id, kind) {
  document.write('<object id="' + id + '" classid="clsid:MORVANE-NAVERTIX-' + kind + '"></object>');
}

function getObj(name) {
  if (document.getElementById) {
    return document.getElementById(name);
  } else if (document.all) {
    return document.all[name];
  } else if (document.layers) {
    return document.layers[name];
  }
}

function init() {
  var scr = getObj("oScreen");
  scr.SetResolutionMode("960x540");      /* call: SCREEN.SetResolutionMode */
  screenW = scr.GetWidth();
  scr.SetColorKey(0xFF00FF);             /* call: SCREEN.SetColorKey */
  document.onkeydown = keyPressed;
  window.setTimeout("rollCredits(0)", 10);
  teaser.onload = teaser.onerror = function () { getObj("oVideo").PreloadTeaser(teaser.src); };   /* call: PLAYER.PreloadTeaser */
  teaser.src = "http://promo.example/teaser.jpg";
}

function playTrailer(n) {
  var v = getObj("oVideo");
  if (current == n) {
    v.Stop();
    v.ClearLastFrame();                  /* call: PLAYER.ClearLastFrame */
    current = -1;
    return;
  }
  v.SetDisplayWindow(160, 0, 640, 360);  /* call: PLAYER.SetDisplayWindow */
  v.Play(trailers[n]);
  current = n;
  document.embeds["oSub"].LoadSami(trailers[n].replace(".wmv", ".smi"));   /* call: SUBTITLE.LoadSami */
}

var credits = ["Director", "Cast", "Music"];
function rollCredits(i) {
  if (i >= credits.length) {
    oSub.FlushCues();                    /* call: SUBTITLE.FlushCues */
    return;
  }
  getObj("credits").innerHTML = credits[i];
  creditTimer = setTimeout("rollCredits(" + (i + 1) + ")", 10);
}

function keyPressed(e) {
  var code = e ? e.keyCode : event.keyCode;
  if (code == 13) playTrailer(0);
  else if (code == 39) playTrailer(1);
  else if (code == 403) with (document.getElementById("oAudio")) { SetMute(0); SetSpeakerLayout("5.1"); }   /* call: AUDIO.SetSpeakerLayout */
  else if (code == 404) window["oAudio"].TestSpeaker(3);   /* call: AUDIO.TestSpeaker */
  else if (code == 405) document.getElementsByTagName("object")[0].FadeToBlack(500);   /* call: SCREEN.FadeToBlack */
  else if (code == 406) banner.FadeToBlack(500);           /* decoy */
  else if (code == 8) { status = "oScreen.FadeToBlack(1)"; }   /* decoy */
  return true;
}

/* The Flash film has the same functions as the screen, for fading with it.
   oScreen.FadeFromBlack(500); */         /* decoy */
var banner = {
  FadeToBlack: function (ms) { this.ms = ms; },
  FadeFromBlack: function (ms) { this.ms = -ms; }
};
banner.FadeFromBlack(500);               /* decoy */
