'use strict';

const rooms = new Map();
const groups = new Set();
const settings = new WeakMap();

for (const node of document.querySelectorAll('.room')) {
  const [output, input] = node.getElementsByTagName('object');
  rooms.set(node.dataset.room, { name: node.dataset.room, output, input: input || null });
  settings.set(output, { volume: 10, delay: 0 });
}

const outputs = Array.from(rooms.values(), (room) => room.output);
const inputs = [...rooms.values()].map(({ input }) => input).filter(Boolean);

function eachOutput(work) {
  outputs.forEach((output, index) => work(output, index, outputs));
}

eachOutput((output, index) => {
  output.SetVolume(settings.get(output).volume);
  output.SetZoneId(index);   /* call: AUDIO.SetZoneId */
});

class Group {
  constructor(...names) {
    this.members = names.map((name) => rooms.get(name));
    groups.add(this);
  }

  get leader() {
    return this.members[0];
  }

  sync() {
    const { leader, members: [, ...others] } = this;
    leader.input.SetSyncMaster(true);   /* call: PLAYER.SetSyncMaster */
    for (const { output } of others) output.FollowMaster(leader.name);   /* call: AUDIO.FollowMaster */
  }

  volume(by) {
    this.members.forEach(({ output }) => {
      const setting = settings.get(output);
      setting.volume += by;
      output.SetVolume(setting.volume);
      output.RampVolume(setting.volume, 250);   /* call: AUDIO.RampVolume */
    });
  }

  * [Symbol.iterator]() {
    yield* this.members;
  }
}

const party = new Group('living', 'kitchen', 'bath');

function latency() {
  const sorted = [...outputs].sort((a, b) => settings.get(a).delay - settings.get(b).delay);
  const slowest = sorted.pop();
  const worst = slowest.MeasureLatency();   /* call: AUDIO.MeasureLatency */
  const table = Object.fromEntries([...rooms].map(([name, { output }]) => [name, output]));
  Object.entries(table).forEach(([, output]) => output.SetDelayCompensation(worst));   /* call: AUDIO.SetDelayCompensation */
}

const queue = [];

function enqueue(room, ...work) {
  queue.push({ room, work });
  if (queue.length === 1) setTimeout(drain, 5);
}

function drain() {
  while (queue.length) {
    const { room, work } = queue.shift();
    const target = rooms.get(room);
    work.forEach((f) => f(target));
  }
}

const flatten = (lists) => lists.reduce((all, list) => all.concat(list), []);

function stopAll() {
  flatten([inputs, []]).forEach((player) => {
    player.Stop();
    player.UnsubscribeClock();   /* call: PLAYER.UnsubscribeClock */
  });
  const found = outputs.find((o) => settings.get(o).volume > 0);
  found.SetIdleTone(false);   /* call: AUDIO.SetIdleTone */
  rooms.forEach((room, name) => {
    if (name !== 'bath') room.input.ReleaseGroup();   /* call: PLAYER.ReleaseGroup */
  });
}

const stack = { items: [document.getElementById('link')], top() { return this.items[this.items.length - 1]; } };

const keys = new Map([
  [13, () => party.sync()],
  [38, () => party.volume(1)],
  [40, () => party.volume(-1)],
  [403, latency],
  [404, () => enqueue('kitchen', (room) => room.input.OpenSharedQueue(1), (room) => room.output.AnnounceRoom('kitchen'))],   /* call: PLAYER.OpenSharedQueue, AUDIO.AnnounceRoom */
  [405, () => { for (const { output } of party) output.IdentifySpeaker(); }],   /* call: AUDIO.IdentifySpeaker */
  [413, stopAll],
]);

addEventListener('keydown', (event) => {
  const action = keys.get(event.keyCode);
  if (action) action(event);
});

stack.top().SetMulticastTtl(4);   /* call: NETWORK.SetMulticastTtl */

// The drawing of the flat has rooms as well.
const drawing = new Map([['living', { output: { SetZoneId: (n) => n, IdentifySpeaker() {} } }]]);
drawing.get('living').output.SetZoneId(3);   /* decoy */
for (const { output } of drawing.values()) output.IdentifySpeaker();   /* decoy */
