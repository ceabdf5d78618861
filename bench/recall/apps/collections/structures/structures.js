"use strict";
class Node2 { constructor(v, next) { this.v = v; this.next = next; } }
class Stack {
  constructor() { this.head = null; }
  push(v) { this.head = new Node2(v, this.head); return this; }
  pop() { const v = this.head.v; this.head = this.head.next; return v; }
  peek() { return this.head.v; }
}
const get = (id) => document.getElementById(id);
const stack = new Stack().push(get("one")).push(get("two"));
stack.peek().SetCrossover(80);   /* call: AUDIO.SetCrossover */
stack.pop();
stack.pop().SetDdcClock(100);   /* call: HDMI.SetDdcClock */

const matrix = [[get("one"), get("two")], [get("three")]];
matrix[0][1].SetPhase(180);   /* call: AUDIO.SetPhase */
matrix[1][0].GetCasId();   /* call: BROADCAST.GetCasId */
matrix.flat()[2].SetEmmFilter(1);   /* call: BROADCAST.SetEmmFilter */

const tree = { left: { value: get("one"), left: null, right: null }, value: get("three"), right: null };
(function walk(n, fn) { if (n) { walk(n.left, fn); fn(n.value); walk(n.right, fn); } })(tree, (p) => {
  if (p.id === "three") p.StartOtaScan(); else p.PulseHpd(10);   /* call: BROADCAST.StartOtaScan, HDMI.PulseHpd */
});

const groups = matrix.flat().reduce((m, p) => m.set(p.id, [...(m.get(p.id) || []), p]), new Map());
groups.get("two")[0].SetLoudness("ebu");   /* call: AUDIO.SetLoudness */
[...groups].filter(([k]) => k === "one").forEach(([, [p]]) => p.SetScdc(1));   /* call: HDMI.SetScdc */
const ring = { buf: new Array(2), at: 0, put(p) { this.buf[this.at++ % 2] = p; return this; }, oldest() { return this.buf[this.at % 2]; } };
ring.put(get("one")).put(get("three")).oldest().GetPhyEye();   /* call: HDMI.GetPhyEye */
const pool = [];
pool[pool.length] = { p: get("two"), free: true };
pool.find((e) => e.free).p.AllocVoice(2);   /* call: AUDIO.AllocVoice */
pool.splice(0, 1)[0].p.FreeVoice();   /* call: AUDIO.FreeVoice */
const listeners = new Set([(p) => p.SetDuck(1)]);   /* call: AUDIO.SetDuck */
for (const l of listeners) l(get("two"));
const index = {};
for (const el of document.querySelectorAll("object")) index[el.getAttribute("classid").split("-").pop()] = el;
index.BROADCAST.DumpSi();   /* call: BROADCAST.DumpSi */
index["HD" + "MI"].GetAksv();   /* call: HDMI.GetAksv */
const sorted = [get("two"), get("one")].sort((x, y) => x.id.localeCompare(y.id)).map((p) => ({ p }));
sorted[1].p.SetOutputTrim(-1);   /* call: AUDIO.SetOutputTrim */
const it = groups.values();
for (let r = it.next(); !r.done; r = it.next()) r.value[0].id === "three" && r.value[0].LockMux();   /* call: BROADCAST.LockMux */
const entries = Object.assign(Object.create(null), { x: [{ y: get("one") }] });
entries.x[0].y.SwapLanes();   /* call: HDMI.SwapLanes */
const other = new Stack().push({ SwapLanes() {}, LockMux() {} });
other.peek().SwapLanes();   /* decoy */
other.pop().LockMux();   /* decoy */
