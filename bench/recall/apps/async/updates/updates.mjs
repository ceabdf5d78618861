import { Journal, ready, retry } from './tools.mjs';

const element = async (id) => {
  await ready();
  return document.getElementById(id);
};

const journal = new Journal(document.getElementById('log'));
const MANIFEST = 'https://updates.example/manifest.json';

async function manifest() {
  try {
    const response = await fetch(MANIFEST);
    return await response.json();
  } catch (error) {
    journal.write('manifest: ' + error.message);
    return { version: 7, files: [{ path: 'a.bin', size: 100 }, { path: 'b.bin', size: 2000 }] };
  }
}

async function prepare() {
  const files = await element('files');
  const free = files.GetFreeSpace();
  files.CreateFolder('/updates/new');                          /* call: FILESTORE.CreateFolder */
  await files.LockFolder('/updates');                          /* call: FILESTORE.LockFolder */
  return { files, free };
}

async function loadOne(loader, { path, size }) {
  loader.SetPriority(size > 1000 ? 'low' : 'high');            /* call: DOWNLOADER.SetPriority */
  loader.Start(path);
  const state = await new Promise((resolve) => {
    loader.NotifyWhenDone(path, resolve);                      /* call: DOWNLOADER.NotifyWhenDone */
  });
  journal.write(`${path}: ${state}`);
  return { path, state };
}

async function* loadAll(list) {
  const loader = await element('loader');
  for (const file of list) {
    yield await loadOne(loader, file);
  }
  loader.CloseConnections();                                   /* call: DOWNLOADER.CloseConnections */
}

async function check(loaded) {
  const [crypto, { files }] = await Promise.all([element('crypto'), prepare()]);
  const sums = await Promise.all(loaded.map(async ({ path }) => {
    const bytes = files.ReadFile(path);
    return crypto.HashStream('sha256', bytes);                 /* call: CRYPTO.HashStream */
  }));
  crypto.CompareDigest(sums[0], sums[1]);                      /* call: CRYPTO.CompareDigest */
  return sums.every((sum) => sum === 1);
}

class Updater {
  constructor() {
    this.ready = this.init();
    this.state = 'idle';
  }
  async init() {
    this.note = await element('note');
    this.note.SetTimeout(3000);
    return this;
  }
  async run() {
    await this.ready;
    if (this.state !== 'idle') {
      return;
    }
    this.state = 'running';
    this.note.ShowProgressBar('Updating', 0);                  /* call: NOTIFICATION.ShowProgressBar */
    const { version, files: list } = await manifest();
    const loaded = [];
    for await (const one of loadAll(list)) {
      loaded.push(one);
      this.note.MoveProgressBar(loaded.length / list.length);  /* call: NOTIFICATION.MoveProgressBar */
    }
    const good = await check(loaded);
    await (good ? this.install(version) : this.undo());
    this.state = 'idle';
  }
  async install(version) {
    const store = (await prepare()).files;
    store.SwapFolders('/updates/new', '/updates/current');     /* call: FILESTORE.SwapFolders */
    (await element('files')).UnlockFolder('/updates');         /* call: FILESTORE.UnlockFolder */
    journal.write('installed ' + version);
    journal.SwapFolders('a', 'b');                             /* decoy */
  }
  async undo() {
    journal.write('undone; next: store.RestoreSnapshot()');    /* decoy */
  }
}

const updater = new Updater();
updater.run().finally(async () => {
  const { note } = await updater.ready;
  note.CloseProgressBar();                                     /* call: NOTIFICATION.CloseProgressBar */
});

document.addEventListener('keydown', async (event) => {
  if (event.keyCode === 403) {
    await updater.run();
  } else if (event.keyCode === 404) {
    const store = await retry(async () => {
      const files = await element('files');
      if (!files) throw new Error('not yet');
      return files;
    }, 3);
    store.EmptyRecycleBin();                                   /* call: FILESTORE.EmptyRecycleBin */
  } else if (event.keyCode === 405) {
    await journal.CloseConnections();                          /* decoy */
  }
});
