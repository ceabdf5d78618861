const byId = (...ids) => ids.map((id) => document.getElementById(id));
const [display, locale, motion] = byId("display", "locale", "motion");
display.SetLocalDimming(0.25);   /* call: DISPLAY.SetLocalDimming */

const devices = { display, locale, nested: { motion, list: [display, locale] } };
const { locale: loc, nested: { motion: mot, list: [first, ...others] } } = devices;
loc.SetFallbackChain(["en", "fr"]);   /* call: LOCALE.SetFallbackChain */
mot.SetPollRate(120);   /* call: MOTION.SetPollRate */
first.InvertPanel();   /* call: DISPLAY.InvertPanel */
others[0].LoadHyphenation("en");   /* call: LOCALE.LoadHyphenation */

function configure({ target, level = 1, ...rest }, [a, b] = [1, 2]) {
  target.SetCabl(level, a, b);   /* call: DISPLAY.SetCabl */
  return { target, ...rest };
}
const { target: again } = configure({ target: display, note: "x" });
again.GetPanelHours();   /* call: DISPLAY.GetPanelHours */

const copy = { ...devices, extra: motion };
copy.extra.ReadGyro();   /* call: MOTION.ReadGyro */
const clones = [...copy.nested.list, motion];
clones[2].BiasSensor(0);   /* call: MOTION.BiasSensor */

function* plugins() {
  yield display;
  const got = yield locale;
  got.SetCollation("de");   /* call: LOCALE.SetCollation */
  yield* [motion];
}
const it = plugins();
it.next().value.GetBacklightCurve();   /* call: DISPLAY.GetBacklightCurve */
it.next().value.GetPhrasebook();   /* call: LOCALE.GetPhrasebook */
it.next(locale).value.FuseAxes();   /* call: MOTION.FuseAxes */

const { SetSensitivity, ZeroAxes } = motion;
SetSensitivity.call(motion, 1);
ZeroAxes.call(motion);   /* call: MOTION.ZeroAxes */

let x = display, y = locale;
[x, y] = [y, x];
y.ShiftPixels(1);   /* call: DISPLAY.ShiftPixels */
for (const { p, v } of [{ p: motion, v: 1 }, { p: motion, v: 2 }]) p.SetDamping(v);   /* call: MOTION.SetDamping */
((p, ...rest) => p.WriteNvLocale(...rest))(locale, 1, 2);   /* call: LOCALE.WriteNvLocale */

const fake = { ShiftPixels() {}, ZeroAxes: () => 0 };
const { ZeroAxes: zero } = fake;
zero();   /* decoy */
fake.ShiftPixels(2);   /* decoy */
const { display: shadow } = { display: fake };
shadow.ShiftPixels(3);   /* decoy */
const key = "SetWhitePoint";
const { [key]: setWhite } = display;
Reflect.apply(setWhite, display, [6500]);   /* call: DISPLAY.SetWhitePoint */
