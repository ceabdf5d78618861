const services = new Map(
  ['audio', 'bluetooth', 'network'].map((name) => [name, document.getElementById(`svc-${name}`)]));
const state = { rooms: [], active: new Set(), master: null };

class Room {
  constructor(name, address) {
    Object.assign(this, { name, address, volume: 20, muted: false });
  }
  // A room's own methods; the audio plug-in has some of the same names.
  SetZoneVolume(v) { this.volume = v; }
  LinkZone(other) { this.linked = other.name; }
  toString() { return `${this.name} (${this.volume})`; }
}

state.rooms.push(...[['Kitchen', 'A1'], ['Bath', 'A2'], ['Study', 'A3']].map((args) => new Room(...args)));

const audio = services.get('audio');
const [, bluetooth, network] = [...services.values()];

function draw() {
  document.getElementById('rooms').innerHTML = state.rooms
    .map((room, i) => `<p class="${state.active.has(room) ? 'on' : ''}">${i + 1}. ${room}</p>`).join('');
}

function toggle(index) {
  const room = state.rooms[index];
  if (!room) return;
  if (state.active.delete(room)) {
    audio.DetachZone(room.address);                     /* call: AUDIO.DetachZone */
  } else {
    state.active.add(room);
    audio.AttachZone(room.address);                     /* call: AUDIO.AttachZone */
    bluetooth.Connect(room.address);
    bluetooth.SetLatencyMode('low');                    /* call: BLUETOOTH.SetLatencyMode */
  }
  draw();
}

function volume(by) {
  for (const room of state.active) {
    room.SetZoneVolume(room.volume + by);               /* decoy */
    services.get('audio').SetZoneVolume(room.address, room.volume);     /* call: AUDIO.SetZoneVolume */
  }
  draw();
}

function link() {
  const active = Array.from(state.active);
  active.slice(1).forEach((room) => {
    room.LinkZone(active[0]);                           /* decoy */
    audio.LinkZone(active[0].address, room.address);    /* call: AUDIO.LinkZone */
  });
}

const ordered = Object.entries({ network: 'EnableMulticast', bluetooth: 'SetRole', audio: 'SetClockSource' });    /* call: NETWORK.EnableMulticast, BLUETOOTH.SetRole, AUDIO.SetClockSource */

function becomeMaster() {
  ordered.forEach(([name, method]) => services.get(name)[method]('master'));    /* also: NETWORK.EnableMulticast, BLUETOOTH.SetRole, AUDIO.SetClockSource */
  state.master = network;
}

function status() {
  const report = ['GetLinkQuality', 'GetPeers'].map((method) => `${method}: ${network[method]()}`);     /* call: NETWORK.GetLinkQuality, NETWORK.GetPeers */
  const plugins = document.querySelectorAll('.svc');
  plugins.forEach((plugin) => report.push(plugin.id));
  const found = [...plugins].find((p) => p.id.endsWith('bluetooth'));
  report.push(found.GetCodec());                        /* call: BLUETOOTH.GetCodec */
  const wanted = Array.from(document.getElementsByTagName('object')).filter((o) => o.id === 'svc-audio');
  report.push(wanted[0].GetZoneCount());                /* call: AUDIO.GetZoneCount */
  document.getElementById('status').textContent = report.join(', ');
}

function leave() {
  const stack = [];
  for (const key of services.keys()) stack.push(services.get(key));
  while (stack.length) {
    const plugin = stack.pop();
    if (plugin === audio) plugin.DissolveGroup();       /* call: AUDIO.DissolveGroup */
  }
  const { master } = state;
  if (master) master.SendGoodbye();                     /* call: NETWORK.SendGoodbye */
  const weak = new WeakMap([[bluetooth, { plugin: bluetooth, rooms: state.rooms }]]);
  const { plugin: b, rooms: [first] } = weak.get(bluetooth);
  b.Disconnect(first.address);
  b.DropAclLink(first.address);                         /* call: BLUETOOTH.DropAclLink */
}

const keys = new Map();
keys.set(38, () => volume(5)).set(40, () => volume(-5)).set(403, link).set(404, becomeMaster).set(457, status).set(461, leave);
document.addEventListener('keydown', ({ keyCode }) => {
  if (keys.has(keyCode)) keys.get(keyCode)();
  else if (keyCode > 48 && keyCode < 58) toggle(keyCode - 49);
  else if (keyCode === 405) document.title = 'audio.PartyMode()';       /* decoy */
});
// The hub of the house tells what buttons on the walls want.
async function listen() {
  const commands = await fetch('http://hub.home/commands').then((r) => r.json()).catch(() => []);
  for (const { action, value } of commands) {
    services.get('audio')[action](value);               /* undecidable: AUDIO */
  }
  setTimeout(listen, 200);
}
listen();
toggle(0);
toggle(1);
