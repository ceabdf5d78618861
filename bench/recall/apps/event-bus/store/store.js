const createStore = (reducer, ...middleware) => {
  let state = reducer(undefined, { type: '@@init' });
  const subs = [];
  const store = {
    getState: () => state,
    subscribe: (f) => { subs.push(f); return () => subs.splice(subs.indexOf(f), 1); },
    dispatch: (action) => { state = reducer(state, action); subs.forEach((f) => f(state)); return action; },
  };
  store.dispatch = middleware.map((m) => m(store)).reduceRight((next, m) => m(next), store.dispatch);
  return store;
};
const initial = { viewer: document.getElementById('imgs'), sensor: document.getElementById('light'), n: 0 };
const reducer = (state = initial, action) => {
  switch (action.type) {
    case 'next': return { ...state, n: state.n + 1 };
    case 'swap': return { ...state, viewer: action.viewer };
    default: return state;
  }
};
const thunk = (store) => (next) => (action) => (typeof action === 'function' ? action(store.dispatch, store.getState) : next(action));
const device = ({ getState }) => (next) => (action) => {
  if (action.type === 'next') getState().viewer.PreloadAt(getState().n + 1);   /* call: IMAGEVIEWER.PreloadAt */
  if (action.effect) action.effect(getState().sensor);
  return next(action);
};
const store = createStore(reducer, thunk, device);
store.subscribe(({ viewer, n }) => viewer.SetIndex(n));   /* call: IMAGEVIEWER.SetIndex */
store.dispatch({ type: 'next' });
store.dispatch({ type: 'x', effect: (s) => s.SetIntegration(100) });   /* call: LIGHTSENSOR.SetIntegration */
store.dispatch((dispatch, getState) => { getState().viewer.SetKenBurns(true); dispatch({ type: 'next' }); });   /* call: IMAGEVIEWER.SetKenBurns */
const select = (f) => f(store.getState());
select((s) => s.sensor).ReadInfrared();   /* call: LIGHTSENSOR.ReadInfrared */
store.getState().viewer.GetIccProfile();   /* call: IMAGEVIEWER.GetIccProfile */

const signal = (v) => { const fs = new Set(); return { get value() { return v; }, set value(n) { v = n; fs.forEach((f) => f(v)); }, effect(f) { fs.add(f); f(v); } }; };
const current = signal(initial.sensor);
current.effect((p) => p.Recalibrate());   /* call: LIGHTSENSOR.Recalibrate */
current.value = initial.sensor;
current.value.SetInterrupt(1);   /* call: LIGHTSENSOR.SetInterrupt */

const target = new EventTarget();
target.addEventListener('tv', { handleEvent({ detail: [p] }) { p.SetWallpaper('a'); } });   /* call: IMAGEVIEWER.SetWallpaper */
target.dispatchEvent(new CustomEvent('tv', { detail: [initial.viewer] }));
document.body.addEventListener('click', ({ target: t }) => t.id === 'imgs' && t.HitTest(1, 2));   /* call: IMAGEVIEWER.HitTest */
initial.sensor.addEventListener('change', function () { this.AckChange(); });   /* call: LIGHTSENSOR.AckChange */
const { port1, port2 } = new MessageChannel();
port1.onmessage = ({ data }) => { if (data === 'go') initial.viewer.FlipPage(); };   /* call: IMAGEVIEWER.FlipPage */
port2.postMessage('go');
addEventListener('storage', (e) => { initial.viewer[e.newValue](); });   /* undecidable: IMAGEVIEWER */
store.dispatch({ type: 'swap', viewer: { SetIndex() {}, FlipPage() {}, PreloadAt() {} } });
createStore(() => ({ viewer: { FlipPage() {} } })).getState().viewer.FlipPage();   /* decoy */
