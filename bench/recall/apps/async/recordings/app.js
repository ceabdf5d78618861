const list = tv.byId('list');
const library = new Library();
let items = [];
let selected = 0;

async function toast(text, ms = 200) {
  const node = tv.byId('toast');
  node.textContent = text;
  node.hidden = false;
  await tv.sleep(ms);
  node.hidden = true;
}

async function draw() {
  list.textContent = '';
  for (const item of items) {
    const entry = list.appendChild(document.createElement('li'));
    entry.className = items.indexOf(item) === selected ? 'selected' : '';
    entry.textContent = `${item.locked ? '🔒 ' : ''}${item.title}`;
    const path = await library.picture(item);
    entry.style.backgroundImage = `url(${path}.jpg)`;
  }
}

const player = {
  plugin: tv.byId('play'),
  async open(item) {
    this.plugin.Open(`rec://${item.id}`);
    await tv.sleep(10);
    this.plugin.SetResumePoint(await this.resume(item));   /* call: PLAYER.SetResumePoint */
    this.plugin.Play();
  },
  resume: async (item) => (item.seen || 0) * 1000,
  async skipAds() {
    const marks = await Promise.resolve(this.plugin.GetAdMarks());   /* call: PLAYER.GetAdMarks */
    this.plugin.SeekTo(marks);
  },
};

const keys = {
  38: async () => { selected = Math.max(0, selected - 1); await draw(); },
  40: async () => { selected = Math.min(items.length - 1, selected + 1); await draw(); },
  13: () => player.open(items[selected]),
  403: async () => { await library.lock(items[selected]); await toast('locked'); },
  404: async () => {
    const { free, label } = await library.space();
    await toast(`${label}: ${free} MB free`);
  },
  405: () => library.check().then(() => toast('checked')),
  406: () => library.copy(items[selected], '/mnt/usb'),
  417: () => player.skipAds(),
};

addEventListener('keydown', async ({ keyCode }) => {
  if (!items.length || !keys[keyCode]) return;
  try {
    await keys[keyCode]();
  } catch (error) {
    if (!(error instanceof tv.TvError)) throw error;
    await toast(error.message, 300);
  }
});

// For the screens of the manual.
const pretend = { recorder: { async ProtectRecording() { return true; }, ExportRecording() {} } };

(async function main() {
  items = await library.list();
  await draw();
  await pretend.recorder.ProtectRecording(1);   /* decoy */
  pretend.recorder.ExportRecording(1, 'tmp');   /* decoy */
  const { recorder } = library;
  recorder.SetDiskSpinDown(600);   /* call: RECORDER.SetDiskSpinDown */
  for await (const item of idle(items)) {
    recorder.AnalyzeRecording(item.id);   /* call: RECORDER.AnalyzeRecording */
  }
})();

async function* idle(work) {
  for (const one of work) {
    await tv.sleep(5);
    yield one;
  }
}
