const app = {
  get epg() { return document.getElementById("epg"); },
  get calendar() { return this._cal || (this._cal = document.getElementById("cal")); },
  holder: { inner: { ttx: document.getElementById("ttx") } },
};
app.epg.SetCrawlDepth(7);   /* call: EPG.SetCrawlDepth */
app.calendar.MergeFeeds("a", "b");   /* call: CALENDAR.MergeFeeds */
app.holder.inner.ttx.ForcePage(100);   /* call: TELETEXT.ForcePage */
const { inner } = app.holder;
inner.ttx.DecodeRaw([1, 2]);   /* call: TELETEXT.DecodeRaw */

const lazy = {};
Object.defineProperty(lazy, "guide", { get: () => document.getElementById("epg"), enumerable: true });
Object.defineProperties(lazy, { cal: { value: document.getElementById("cal") } });
lazy.guide.DropStale();   /* call: EPG.DropStale */
lazy.cal.SetTimezoneTable({});   /* call: CALENDAR.SetTimezoneTable */

class Box {
  constructor(el) { this._el = el; }
  get value() { return this._el; }
  set value(el) { this._el = el; }
}
const box = new Box(null);
box.value = document.getElementById("ttx");
box.value.PatchGlyphs(3);   /* call: TELETEXT.PatchGlyphs */

const logged = new Proxy(document.getElementById("epg"), {
  get(target, name) { const v = target[name]; return typeof v === "function" ? v.bind(target) : v; },
});
logged.GetPresentEvent();
logged.InjectEvent({ id: 1 });   /* call: EPG.InjectEvent */
const loose = new Proxy({}, { get: (_, id) => document.getElementById(id) });
loose.cal.WipeAlarms();   /* call: CALENDAR.WipeAlarms */
const { epg } = loose;
epg.SetBarkerUrl("http://b.example");   /* call: EPG.SetBarkerUrl */
const verbs = new Proxy({}, { get: (_, name) => (...args) => app.epg[name](...args) });   /* call: EPG.RebuildIndex */
verbs.RebuildIndex();   /* also: EPG.RebuildIndex */

const deco = Object.create(box, { tag: { value: 1 } });
deco.value.SetMosaicMode(1);   /* call: TELETEXT.SetMosaicMode */
const frozen = Object.freeze({ plugins: Object.assign({}, { c: lazy.cal }) });
frozen.plugins.c.ShareEntry(2);   /* call: CALENDAR.ShareEntry */
const memo = ((cache) => (id) => cache[id] ??= document.getElementById(id))({});
memo("ttx").HoldSubpage();   /* call: TELETEXT.HoldSubpage */
const legacy = {};
legacy.__defineGetter__("plug", () => memo("cal"));
legacy.plug.ImportIcs("x.ics");   /* call: CALENDAR.ImportIcs */

const shadow = new Proxy({}, { get: () => () => 0 });
shadow.InjectEvent();   /* decoy */
const own = { get epg() { return { DropStale() {} }; } };
own.epg.DropStale();   /* decoy */
