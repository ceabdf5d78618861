'use strict';

const $ = (id) => document.getElementById(id);
const pause = (ms) => new Promise((done) => setTimeout(done, ms));

async function* thirds() {
  for (let i = 0; i < 3; i++) {
    await pause(1);
    yield 0.34;
  }
}

// Boxes, because the plug-ins are no values that a promise should be resolved with.
const open = async (id) => ({ id, device: $(id) });

/** Books that lie on the server only. They are fetched by the page. */
const remoteShelf = {
  books: [{ id: 'r1', title: 'Far' }],
  async Prefetch(id) { await pause(1); return this.books.find((book) => book.id === id); },
  async CheckOut(id) { return { id, until: Date.now() + 1e6 }; },
  async Renew(id) { return this.CheckOut(id); },                            /* decoy */
  ListChunks: () => [],
};

async function download(title) {
  const { device } = await open('downloader');
  device.SetDestination(`/books/${title}`);
  device.Prefetch(title);                                                   /* call: DOWNLOADER.Prefetch */
  device.SetChunkSize(65536);                                               /* call: DOWNLOADER.SetChunkSize */
  device.Start();
  const [job] = await new JobQueue().Push(new Job(title, thirds));          /* decoy */
  try {
    if (!job) throw new Error('no job');
    device.CheckDigest(title);                                                   /* call: DOWNLOADER.CheckDigest */
  } catch (error) {
    console.log(error.message);
  }
  return job;
}

async function borrow(id) {
  const ticket = await remoteShelf.CheckOut(id);                            /* decoy */
  const [{ device: drm }, book] = await Promise.all([open('drm'), remoteShelf.Prefetch(id)]);    /* decoy */
  drm.AcquireLicense(ticket.id);
  drm.CheckOut(ticket.id, ticket.until);                                    /* call: DRM.CheckOut */
  return book;
}

async function renewAll() {
  const shelves = [{ local: true, on: $('drm') }, { local: false, on: remoteShelf }];
  for (const { local, on } of shelves) {
    if (local) {
      on.ExtendRental(7);                                                   /* call: DRM.ExtendRental */
    } else {
      await on.Renew('r1');                                                 /* decoy */
    }
  }
}

async function inventory() {
  const { device: store } = await open('files');
  const local = store.ListFiles('/books');
  store.WatchFolder('/books', () => paint());                               /* call: FILESTORE.WatchFolder */
  const chunks = await Promise.resolve(remoteShelf).then((shelf) => shelf.ListChunks());      /* decoy */
  return [local, ...chunks, ...remoteShelf.books.map(({ title }) => title)];
}

async function paint() {
  const names = await inventory().catch(() => []);
  $('shelf').innerHTML = names.map((name) => `<li>${name}</li>`).join('');
}

let painted = false;
const once = async () => {
  if (painted) return;
  painted = true;
  await paint();
};

const library = Promise.resolve({ queue: new JobQueue(), store: $('files') });

const keys = {
  13: () => download('Near'),
  403: () => borrow('r1'),
  404: renewAll,
  405: async () => {
    const { queue, store } = await library;
    await queue.Drain();                                                    /* decoy */
    store.Drain();                                                          /* call: FILESTORE.Drain */
  },
  406: async () => {
    const { queue } = await library;
    const [result] = await Promise.allSettled([queue.Push(new Job('index', thirds))]);      /* decoy */
    const [job] = result.value || [];
    if (job) job.Advance(0);                                                /* decoy */
    (await library).store.SyncFolder('/books');                             /* call: FILESTORE.SyncFolder */
  },
  27: () => library.then(({ store }) => store.Unmount()),                   /* call: FILESTORE.Unmount */
};

addEventListener('keydown', ({ keyCode }) => { keys[keyCode] && keys[keyCode](); });
once();
