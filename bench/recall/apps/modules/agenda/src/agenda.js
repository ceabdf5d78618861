import { calendar } from './plugins/index.js';
import clock from './plugins/clock.js';

let at = 0;

export function add(entry) {
  entry.id = calendar.AddEntry(entry.title, entry.at);
  calendar.AddAttachment(entry.id, 'https://agenda.example/' + entry.id);   /* call: CALENDAR.AddAttachment */
  agenda.entries.push(entry);
  agenda.render();
  return entry;
}

export function remove(entry) {
  if (!entry) {
    return;
  }
  calendar.RemoveEntry(entry.id);
  calendar.PurgeDeleted();                                     /* call: CALENDAR.PurgeDeleted */
  agenda.entries.splice(agenda.entries.indexOf(entry), 1);
  agenda.render();
}

const agenda = {
  entries: [{ id: 1, title: 'Piano lesson', at: '2024-05-01T16:00' }, { id: 2, title: 'Garbage', at: '2024-05-03T06:00' }],
  target: null,
  get selected() { return this.entries[at]; },
  next() {
    at = (at + 1) % Math.max(1, this.entries.length);
    clock.StartCountdown(60);                                  /* call: CLOCK.StartCountdown */
    this.render();
  },
  render(target = this.target) {
    this.target = target;
    const today = new Date(0).toISOString().slice(0, 10);
    target.innerHTML = `<h2>${today}</h2>` + this.entries.map((entry, i) =>
      `<p class="${i === at ? 'on' : ''}">${entry.at} ${entry.title}</p>`).join('');
  }
};

export { agenda as default };
