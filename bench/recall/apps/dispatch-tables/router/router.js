const player = document.getElementById('plg_player');
const recorder = document.getElementById('plg_rec');

// Routes: [pattern, handler], the first that fits wins.
const routes = [
  [/^play\/(\w+)$/, (id) => player.LoadManifest(id)],   /* call: PLAYER.LoadManifest */
  [/^rec\/(\d+)$/, (n) => recorder.CloneRecording(n)],   /* call: RECORDER.CloneRecording */
  [/^rec\/list$/, listAll],
  [/.*/, () => ({})],
];
function listAll() { return recorder.GetCatalogue({ sort: 'date' }); }   /* call: RECORDER.GetCatalogue */
function go(path) {
  for (const [re, fn] of routes) {
    const m = re.exec(path);
    if (m) return fn(...m.slice(1));
  }
}
['play/abc', 'rec/12', 'rec/list', 'nowhere'].forEach(go);

// A state machine: what happens on the way in and out of each state.
const machine = {
  state: 'idle',
  states: {
    idle: { start: 'busy', enter: (p) => p.ReleaseSurface() },   /* call: PLAYER.ReleaseSurface */
    busy: { stop: 'idle', enter(p) { p.AcquireSurface(this); }, leave: leaveBusy },   /* call: PLAYER.AcquireSurface */
  },
  send(event) {
    const from = this.states[this.state];
    if (from.leave) from.leave(player);
    this.state = from[event];
    this.states[this.state].enter(player);
  },
};
function leaveBusy(p) { p.SaveBookmark(p.GetPosition()); }   /* call: PLAYER.SaveBookmark */
machine.send('start');
machine.send('stop');

const ACTIONS = { rename: { m: 'RetitleRecording' }, shrink: { m: 'TranscodeDown' }, info: { m: 'GetRecordingState' } };
const dispatch = ({ type, args = [] }) => recorder[ACTIONS[type].m](...args);   /* call: RECORDER.RetitleRecording, RECORDER.TranscodeDown */
dispatch({ type: 'rename', args: ['x'] });
dispatch({ type: 'shrink' });
dispatch({ type: 'info' });

const byKey = new Map([[403, 'SetLoopA'], [404, 'SetLoopB']]);
addEventListener('keydown', (e) => byKey.has(e.keyCode) && player[byKey.get(e.keyCode)](e.keyCode));   /* call: PLAYER.SetLoopA, PLAYER.SetLoopB */
switch (location.hash || '#none') {
  case '#none': var chosen = recorder, verb = 'CheckIntegrity'; break;
  default: chosen = player; verb = 'Stop';
}
chosen[verb]();   /* call: RECORDER.CheckIntegrity */
const local = { TranscodeDown: () => 0 };
local[ACTIONS.shrink.m]();   /* decoy */
addEventListener('hashchange', () => recorder[location.hash.slice(1)]?.());   /* undecidable: RECORDER */
