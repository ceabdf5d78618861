import agenda, { add, remove as drop } from './agenda.js';
import * as plugins from './plugins/index.js';
import { notify, default as Notifier } from './notify.js';
import { keys } from './keys.js';
import { AddAttachment } from './fake.js';

plugins.calendar.SetFirstWeekday(1);                           /* call: CALENDAR.SetFirstWeekday */
plugins.default.clock.ShowWorldClock('Lisbon');                /* call: CLOCK.ShowWorldClock */

const notifier = new Notifier(plugins.notification);

keys.on(403, () => {
  const entry = add({ title: 'Dentist', at: '2024-05-02T09:00' });
  notify(`Added ${entry.title}`);
});
keys.on(404, () => drop(agenda.entries[0]));
keys.on(405, async () => {
  const { exportMonth } = await import('./export.js');
  exportMonth(plugins.calendar, 5);
});
keys.on(406, () => notifier.urgent('Leave now'));
keys.on(13, () => {
  agenda.next();
  AddAttachment('map.png');                                    /* decoy */
});
keys.on(415, () => {
  const { calendar: { ShareEntry } } = plugins;                /* also: CALENDAR.ShareEntry */
  ShareEntry.call(plugins.calendar, agenda.selected);          /* call: CALENDAR.ShareEntry */
});

agenda.render(document.getElementById('agenda'));
