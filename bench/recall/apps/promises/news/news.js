'use strict';

const ready = new Promise((resolve) => {
  if (document.readyState === 'complete') resolve(document);
  else window.addEventListener('load', () => resolve(document));
});
const wait = (ms, value) => new Promise((done) => setTimeout(done, ms, value));
// An element with a "then" would be taken for a promise, so it travels in a box.
const lookUp = (id) => ready.then((doc) => ({ plugin: doc.getElementById(id) }));

lookUp('netPlugin')
  .then(({ plugin }) => { plugin.SetProxyPac('auto'); return plugin.GetAddress(); })   /* call: NETWORK.SetProxyPac */
  .then((address) => lookUp('notePlugin').then((box) => box.plugin.PinMessage(address)))   /* call: NOTIFICATION.PinMessage */
  .catch((e) => { document.title = e.message; })
  .finally(() => document.getElementById('netPlugin').MarkMetered(true));   /* call: NETWORK.MarkMetered */

async function signIn() {
  const { plugin: account } = await lookUp('accPlugin');
  account.SignIn('guest');
  account.ImportCookies('session');   /* call: ACCOUNT.ImportCookies */
  const box = await wait(5, { plugin: account });
  box.plugin.ExportToken();   /* call: ACCOUNT.ExportToken */
  return box;
}

async function headlines() {
  const [net, note] = await Promise.all([lookUp('netPlugin'), lookUp('notePlugin')]);
  note.plugin.ShowMessage('loading');
  note.plugin.SetPriorityBand(2);   /* call: NOTIFICATION.SetPriorityBand */
  try {
    await Promise.reject(new Error('offline'));
  } catch (e) {
    net.plugin.DumpInterfaces(e.message);   /* call: NETWORK.DumpInterfaces */
  }
  for await (const one of feed()) one.plugin.AppendTicker('x');   /* call: NOTIFICATION.AppendTicker */
  return net.plugin;
}

async function* feed() {
  yield await lookUp('notePlugin');
}

signIn().then(async ({ plugin }) => {
  await null;
  plugin.LinkHousehold(1);   /* call: ACCOUNT.LinkHousehold */
  const chosen = await Promise.race([wait(1, { plugin }), wait(50, {})]);
  chosen.plugin.SetParentalHash('0');   /* call: ACCOUNT.SetParentalHash */
});
headlines().then((nobody) => typeof nobody);
queueMicrotask(() => document.querySelector('#accPlugin').TouchSession());   /* call: ACCOUNT.TouchSession */
new Promise((resolve) => document.getElementById('notePlugin').ShowMessage('hi', resolve))
  .then(() => document.getElementById('notePlugin').GetReadReceipt());   /* call: NOTIFICATION.GetReadReceipt */

const mock = Promise.resolve({ plugin: { ExportToken: () => '', LinkHousehold() {} } });
mock.then(({ plugin }) => plugin.ExportToken());   /* decoy */
(async () => (await mock).plugin.LinkHousehold())();   /* decoy */
requestAnimationFrame(() => lookUp('netPlugin').then((n) => n.plugin.SetFairShare(0.5)));   /* call: NETWORK.SetFairShare */
