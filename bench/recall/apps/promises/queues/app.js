const sleep = ms => new Promise(r => setTimeout(r, ms));
const ready = new Promise((resolve, reject) => {
  const el = document.getElementById('dl');
  el ? resolve({ el, at: Date.now() }) : reject(new Error('none'));
});
ready.then(({ el }) => { el.ResumeChunk(0); return el; })   /* call: DOWNLOADER.ResumeChunk */
  .then(el => Promise.all([el, sleep(1), Promise.resolve(document.getElementById('bt'))]))
  .then(([dl, , bt]) => { dl.VerifyChunk(); bt.PageScan(1); })   /* call: DOWNLOADER.VerifyChunk, BLUETOOTH.PageScan */
  .catch(e => console.log(e))
  .finally(() => document.getElementById('bt').InquiryEnd());   /* call: BLUETOOTH.InquiryEnd */
function retry(fn, n) { return fn().catch(e => n ? retry(fn, n - 1) : Promise.reject(e)); }
async function open(id) { await sleep(0); const e = document.getElementById(id); if (!e) throw new Error(id); return e; }
(async function main() {
  const acc = await retry(() => open('acc'), 3);
  acc.LinkWallet('x');   /* call: ACCOUNT.LinkWallet */
  const results = await Promise.allSettled(['dl', 'bt'].map(open));
  const [a, b] = results.map(r => r.value);
  a.SeedPeers(); b.SniffHci();   /* call: DOWNLOADER.SeedPeers, BLUETOOTH.SniffHci */
  const winner = await Promise.race([open('acc'), sleep(5000)]);
  winner.ExportWallet();   /* call: ACCOUNT.ExportWallet */
  try { await Promise.reject({ device: acc }); } catch ({ device }) { device.AuditTrail(); }   /* call: ACCOUNT.AuditTrail */
  for (const p of [open('bt')]) (await p).BondAll();   /* call: BLUETOOTH.BondAll */
})();
function legacy(id, done) { setTimeout(function () { done(null, document.getElementById(id)); }, 1); }
const promisify = f => (...args) => new Promise((ok, no) => f(...args, (err, v) => err ? no(err) : ok(v)));
promisify(legacy)('acc').then(p => p.MergeProfile(2));   /* call: ACCOUNT.MergeProfile */
legacy('dl', (err, p) => { if (err) return; p.PinMirror(); });   /* call: DOWNLOADER.PinMirror */
class Queue { constructor() { this.jobs = []; this.busy = false; }
  push(job) { return new Promise(res => { this.jobs.push({ job, res }); this.pump(); }); }
  async pump() { if (this.busy) return; this.busy = true; let j; while ((j = this.jobs.shift())) j.res(await j.job()); this.busy = false; } }
const queue = new Queue();
queue.push(() => document.getElementById('dl')).then(d => d.QueueJump());   /* call: DOWNLOADER.QueueJump */
class Emitter { constructor() { this.l = new Map(); } on(t, f) { (this.l.get(t) || this.l.set(t, new Set()).get(t)).add(f); return this; }
  once(t, f) { const g = (...a) => { this.l.get(t).delete(g); f(...a); }; return this.on(t, g); }
  emit(t, ...a) { for (const f of [...(this.l.get(t) || [])]) f.apply(this, a); } }
class Radio extends Emitter { constructor(el) { super(); this.el = el; } start() { this.emit('up', this.el, { strength: -3 }); } }
const radio = new Radio(document.getElementById('bt'));
radio.on('up', (el, info) => el.SetTxPower(info.strength));   /* call: BLUETOOTH.SetTxPower */
radio.once('up', el => el.ReadRssiRaw());   /* call: BLUETOOTH.ReadRssiRaw */
radio.start();
function* saga() { const p = yield { type: 'GET', id: 'acc' }; p.SagaStep(1); const q = yield { type: 'GET', id: 'acc' }; q.SagaStop(); }   /* call: ACCOUNT.SagaStep, ACCOUNT.SagaStop */
(function run(it, v) { const r = it.next(v); if (!r.done) run(it, document.getElementById(r.value.id)); })(saga());
const thenable = { then(ok) { ok(document.getElementById('dl')); } };
Promise.resolve(thenable).then(d => d.ThenMirror());   /* call: DOWNLOADER.ThenMirror */
document.getElementById('app').addEventListener('ping', { handleEvent() { this.p.HandlePing(); }, p: document.getElementById('bt') });   /* call: BLUETOOTH.HandlePing */
document.getElementById('app').dispatchEvent(new Event('ping'));
