const motion = PluginBuilder.for("MOTION").id("mo").attr("width", 0).build();
motion.Calibrate();
motion.SetGesture("wave");   /* call: MOTION.SetGesture */
document.getElementById("mo").RecordGesture(3);   /* call: MOTION.RecordGesture */

const tree = h("div", null, h("object", { id: "fontNode", classid: "clsid:MORVANE-NAVERTIX-FONT" }), "text");
document.body.append(tree);
tree.firstChild.SetRasterizer("gpu");   /* call: FONT.SetRasterizer */
fontNode.GetGlyphRun("x");   /* call: FONT.GetGlyphRun */

const clone = document.getElementById("tpl").content.cloneNode(true).querySelector(".p");
document.body.appendChild(clone);
clone.SetColourSpace("p3");   /* call: SCREEN.SetColourSpace */

Locator.provide("screen", () => clone);
Locator.provide("drm", () => PluginBuilder.for("DRM").build());
Locator.provide("pair", (l) => ({ a: l.resolve("screen"), b: l.resolve("drm") }));
Locator.resolve("screen").SetRefresh(100);   /* call: SCREEN.SetRefresh */
const { a, b } = Locator.resolve("pair");
a.DimSubtitles(0.4);   /* call: SCREEN.DimSubtitles */
b.SetCdmPath("/opt");   /* call: DRM.SetCdmPath */

const kinds = { ACCOUNT: (p) => p.MergeProfiles(), CLOCK: (p) => p.SetTickRate(10) };   /* call: ACCOUNT.MergeProfiles, CLOCK.SetTickRate */
Object.keys(kinds).map((k) => [PluginBuilder.for(k).build(), kinds[k]]).forEach(([p, f]) => f(p));
const abstract = (make) => ({ create: (...x) => make(...x), with: (f) => f(make("STORAGE")) });
abstract((k) => PluginBuilder.for(k).build()).with((s) => s.CompactStore());   /* call: STORAGE.CompactStore */
abstract((k) => PluginBuilder.for(k).build()).create("EPG").SetGrid(3);   /* call: EPG.SetGrid */
const range = document.createRange().createContextualFragment('<object id="ctx" classid="clsid:MORVANE-NAVERTIX-HAPTIC"></object>');
document.body.append(range);
document.querySelector("#ctx").MixWave(1);   /* call: HAPTIC.MixWave */
const plain = h("object", { id: "plain" });
plain.MixWave = () => 0;
plain.MixWave();   /* decoy */
const other = abstract(() => ({ SetGrid() {} }));
other.create().SetGrid(1);   /* decoy */
