var box = function (id) { return Promise.resolve([document.getElementById(id)]); };

co(function* () {
  var b = (yield box('blue'))[0];
  b.Open();
  b.SetClassOfDevice(0x240404);   /* call: BLUETOOTH.SetClassOfDevice */
  try {
    yield Promise.reject([b]);
  } catch (e) {
    e[0].ClearBonds();   /* call: BLUETOOTH.ClearBonds */
  }
  var both = yield Promise.all([box('blue'), box('ser')]);
  both[1][0].SetLineState(3);   /* call: SERIALPORT.SetLineState */
  yield* nested(both[0][0]);
  return { port: both[1][0] };
}).then(function (r) {
  r.port.PurgeRx();   /* call: SERIALPORT.PurgeRx */
  return { ok: r };
}).then(({ ok: { port } }) => port.PurgeTx());   /* call: SERIALPORT.PurgeTx */

function* nested(b) { yield 1; b.SetTxPower(-4); }   /* call: BLUETOOTH.SetTxPower */

var d = new Deferred();
d.promise.then(function (holder) { holder.p.HopChannels(); });   /* call: BLUETOOTH.HopChannels */
d.resolve({ p: document.getElementById('blue') });

var ser = document.getElementById('ser');
promisify(ser, 'RequestFrame')(1).then(function () { ser.AckFrame(); });   /* call: SERIALPORT.AckFrame */  /* also: SERIALPORT.RequestFrame */
promisify(document.getElementById('blue'), 'QueryServices')();   /* also: BLUETOOTH.QueryServices */

const ticks = { async *[Symbol.asyncIterator]() { for (let i = 0; i < 2; i++) yield { ser, i }; } };
(async function poll() {
  for await (const { ser: s, i } of ticks) s.PollPin(i);   /* call: SERIALPORT.PollPin */
  const results = await Promise.allSettled([box('blue'), Promise.reject(0)]);
  results.filter((r) => r.status === 'fulfilled').forEach((r) => r.value[0].RenameLocal('tv'));   /* call: BLUETOOTH.RenameLocal */
  const thenable = { then(ok) { ok({ late: ser }); } };
  (await thenable).late.SetGuardTime(2);   /* call: SERIALPORT.SetGuardTime */
  await new Promise((r) => setTimeout(r, 1));
  const ac = new AbortController();
  ac.signal.addEventListener('abort', () => ser.AbortIo());   /* call: SERIALPORT.AbortIo */
  ac.abort();
  await (async () => { throw Object.assign(new Error('x'), { port: ser }); })();
})().catch((e) => e.port.LogError(e.message));   /* call: SERIALPORT.LogError */
box('x').then(() => [{ HopChannels() {} }]).then(([f]) => f.HopChannels());   /* decoy */
