const env = Object.fromEntries(['cal', 'loc'].map((k) => [k, document.getElementById(`${k}Plugin`)]));
env.cal.SetEpoch(0);   /* call: CALENDAR.SetEpoch */

const tag = (strings, ...values) => values.reduce((p, v, i) => (p.AppendNote?.(strings[i], v), p), env.cal);   /* call: CALENDAR.AppendNote */
tag`hello ${1} world ${2}`;

function run({ source: { cal = env.cal } = {}, sink = env.loc, steps: [one = () => {}, ...more] = [] } = {}, log = sink.SetLogLocale) {
  cal.BeginBatch();   /* call: CALENDAR.BeginBatch */
  log.call(sink, 'en');   /* call: LOCALE.SetLogLocale */
  one(cal);
  more.forEach((f) => f(sink));
  return [cal, , sink];
}
const [a, , b] = run({ steps: [(p) => p.SplitEntry(1), (p) => p.SetEra('c')] });   /* call: CALENDAR.SplitEntry, LOCALE.SetEra */
a.CommitBatch();   /* call: CALENDAR.CommitBatch */
b.GetEraTable();   /* call: LOCALE.GetEraTable */

class Range {
  constructor(...items) { this.items = items; }
  *[Symbol.iterator]() { for (const item of this.items) yield { item }; }
}
for (const { item: { cal, loc } } of new Range(env)) { cal.TouchIndex(); loc.ReloadTables(); }   /* call: CALENDAR.TouchIndex, LOCALE.ReloadTables */
const [{ item: first }] = new Range(env.loc);
first.SetPlural('x');   /* call: LOCALE.SetPlural */

function* machine() {
  let p = yield 'which?';
  while (p) { p.StepMachine(); p = yield p; }   /* call: CALENDAR.StepMachine */
}
const m = machine();
m.next();
m.next(env.cal);
m.return();

const merge = (...parts) => parts.reduce((acc, part) => ({ ...acc, ...part }), {});
const { loc: shadow = null, ...others } = merge({ cal: env.cal }, { loc: env.loc });
shadow.SetNumerals('latn');   /* call: LOCALE.SetNumerals */
others.cal.RingBell();   /* call: CALENDAR.RingBell */
let x = null;
x ??= env.cal;
x &&= [x, x][1];
x.SetSnooze(9);   /* call: CALENDAR.SetSnooze */
({ p: x } = { p: env.loc });
x.SetTransliteration('de');   /* call: LOCALE.SetTransliteration */
outer: for (const p of Array.from({ length: 2 }, (_, i) => [env.cal, env.loc][i])) { p.id === 'calPlugin' ? p.ClipRange(1) : p.ClipLocale(); continue outer; }   /* call: CALENDAR.ClipRange, LOCALE.ClipLocale */
const { SetNumerals } = { SetNumerals: () => 0 };
SetNumerals();   /* decoy */
{ const env = { cal: { ClipRange() {} } }; env.cal.ClipRange(); }   /* decoy */
