const ids = ['epg', 'chan', 'tt'];
const [epg, channel, ...rest] = ids.map((id) => document.getElementById(id));
const env = { epg, plugins: { channel, teletext: rest[0] }, options: { hours: 3, step: 30 } };

const defaults = { hours: 2, rows: 6, favourites: false };
const options = { ...defaults, ...env.options };
const state = { row: 0, column: 0, filter: null };

const demo = [
  { id: 1, name: 'One', events: [{ t: '20:00', title: 'News' }, { t: '20:30', title: 'Quiz' }] },
  { id: 2, name: 'Two', events: [{ t: '20:00', title: 'Film' }] },
  { id: 3, name: 'Three', events: [{ t: '20:15', title: 'Concert' }, { t: '22:00', title: 'Late' }] }
];

function prepare({ epg: guide, plugins: { channel: list } }, { hours = 2, ...more } = {}) {
  guide.Open();
  guide.SetTimeWindow(hours * 3600);                           /* call: EPG.SetTimeWindow */
  list.SortByUsage();                                          /* call: CHANNEL.SortByUsage */
  return [guide, list, more];
}

const [guide, , { step, rows = 5 }] = prepare(env, options);
guide.SetGenreColours(true);                                   /* call: EPG.SetGenreColours */

function render(list) {
  const cells = list.slice(0, rows).map(({ name, events: [first, second = { title: '-' }] }, row) =>
    `<tr class="${row === state.row ? 'on' : ''}"><th>${name}</th><td>${first.title}</td><td>${second.title}</td></tr>`);
  document.getElementById('grid').innerHTML = cells.join('');
}

function load({ from = Date.now(), to = from + step * 60000 } = {}) {
  const raw = guide.GetEventList(from, to);
  const events = Array.isArray(raw) ? raw : demo;
  render(state.filter ? events.filter(state.filter) : events);
  return { events, source: guide };
}

function details() {
  const { source, events: { length, [state.row]: { id, ...event } = {} } } = load();
  const text = source.GetSynopsis(id, 'long');                 /* call: EPG.GetSynopsis */
  document.getElementById('info').textContent = `${state.row + 1}/${length} ${Object.keys(event)} ${text}`;
}

function remember({ target = channel, key } = {}) {
  target.AddFavourite(demo[state.row].id, key);                /* call: CHANNEL.AddFavourite */
}

const actions = {
  tune(...targets) {
    const [main] = targets;
    main.SetChannel(demo[state.row].id);
    main.ShowBanner(3000);                                     /* call: CHANNEL.ShowBanner */
  },
  remind: ({ SetEventAlarm, ...others }) => {
    const [first = null] = Object.values(others);
    return first && first.length && SetEventAlarm(demo[state.row].id);   /* decoy */
  },
  both(...args) {
    const copies = [...args, guide];
    copies[copies.length - 1].MarkRow(state.row);              /* call: EPG.MarkRow */
  }
};

const fake = { SetEventAlarm: (id) => id, list: [1, 2] };      /* decoy */

function swap() {
  let [a, b] = [guide, channel];
  [a, b] = [b, a];
  a.BlockAdultChannels();                                      /* call: CHANNEL.BlockAdultChannels */
  b.RefreshCarousel();                                         /* call: EPG.RefreshCarousel */
}

function pages(...[{ teletext }, page = 100]) {
  teletext.ShowPage(page);
  teletext.HoldPage(true);                                     /* call: TELETEXT.HoldPage */
}

function walk(entries) {
  for (const [name, plugin] of Object.entries(entries)) {
    if (name === 'teletext') {
      plugin.SetSubpageCycle(8);                               /* call: TELETEXT.SetSubpageCycle */
    }
  }
}

const keymap = {
  13: () => actions.tune(...[channel, guide]),
  403: () => remember({ key: 'red' }),
  404: () => actions.remind({ ...fake }),
  405: () => actions.both(1, ...[2, 3]),
  406: swap,
  412: () => pages(env.plugins, 301),
  417: () => walk(env.plugins),
  457: details
};
const parse = (code) => ({ ...(code === 38 && { row: -1 }), ...(code === 40 && { row: +1 }), code });

window.addEventListener('keydown', ({ keyCode }) => {
  const { row = 0, code } = parse(keyCode);
  state.row = Math.min(demo.length - 1, Math.max(0, state.row + row));
  const { [code]: action = () => undefined } = keymap;
  action();
  load();
});

({ chan: env.last } = window);
env.last.RestoreLastList();                                    /* call: CHANNEL.RestoreLastList */
load();
