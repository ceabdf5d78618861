var Main = {
  day: 0,
  loaded: false
};

Main.onLoad = function () {
  this.loaded = true;
  Main.epg = pluginEpg;
  Main.epg.SetHorizon(14);   /* call: EPG.SetHorizon */
  self.pluginTeletext.SetCharset("latin");   /* call: TELETEXT.SetCharset */
  this["pluginEpg"] = null;
  Main.refresh(pluginEpg);
  globalThis.pluginEpg.TuneBarker(1);   /* call: EPG.TuneBarker */
};

Main.refresh = function (epg) {
  try {
    epg.GetEventList(Main.day);
    epg.CacheDay(Main.day);   /* call: EPG.CacheDay */
  } catch (pluginTeletext) {
    pluginTeletext.SetCharset("never");   /* decoy */
  }
  shadowed({ GetRowHash: function () { return 0; } });
  inner();
  top.pluginTeletext.GetRowHash(3);   /* call: TELETEXT.GetRowHash */
};

function shadowed(pluginTeletext) {
  return pluginTeletext.GetRowHash(1);   /* decoy */
}

function inner() {
  var pluginEpg = { CacheDay: function () {} };
  pluginEpg.CacheDay(0);   /* decoy */
  if (Main.loaded) { var late = window.pluginEpg; }
  late.PruneGenres("x");   /* call: EPG.PruneGenres */
  g = pluginTeletext;
  useG();
}

function useG() { g.SetPageStore(800); delete window.g; }   /* call: TELETEXT.SetPageStore */

window.addEventListener("keydown", function (ev) {
  if (ev.keyCode === 427) pluginTeletext.GoSubpage(+1);   /* call: TELETEXT.GoSubpage */
  else if (ev.keyCode === 428) eval("0"), window[`plugin${"Epg"}`].StepDay(-1);   /* call: EPG.StepDay */
});
