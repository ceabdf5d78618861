class Signage {
  constructor(root, playlist) {
    this.root = root;
    this.playlist = playlist;
    this.index = -1;
    this.errors = 0;
    document.body.append(document.getElementById('devices').content.cloneNode(true));
    this.kinds = {};
    for (const node of document.querySelectorAll('.devices [data-kind]')) {
      this.kinds[node.dataset.kind] = node;
    }
  }

  get screen() { return this.kinds.screen; }
  get player() { return this.kinds.player; }

  start() {
    const { power, store } = this.kinds;
    this.screen.SetScreenSaver(false);
    this.screen.SetVideoWallTile(0, 0, 2, 2);                   /* call: SCREEN.SetVideoWallTile */
    power.SetDailySchedule(this.playlist.hours.on, this.playlist.hours.off);   /* call: POWER.SetDailySchedule */
    power.EnableWatchdog(60);                                   /* call: POWER.EnableWatchdog */
    store.PinCache(this.playlist.items.map((item) => item.source).join());     /* call: FILESTORE.PinCache */
    this.next();
  }

  next() {
    this.index = (this.index + 1) % this.playlist.items.length;
    const item = this.playlist.items[this.index];
    try {
      this[item.type](item);
    } catch (error) {
      this.errors += 1;
      this.screen.DrawErrorCode(this.errors);                   /* call: SCREEN.DrawErrorCode */
    }
    this.kinds.power.KickWatchdog();                            /* call: POWER.KickWatchdog */
    if (this.index || !this.rounds) {
      this.timer = setTimeout(() => this.next(), item.ms);
    }
    if (this.index === 0) this.rounds = (this.rounds || 0) + 1;
  }

  image({ source }) {
    this.root.innerHTML = '';
    const picture = new Image();
    picture.alt = source;
    this.root.append(picture);
    this.screen.SetDither(true);                                /* call: SCREEN.SetDither */
  }

  video({ source }) {
    this.player.Open(source);
    this.player.SetVideoRect(0, 0, 1920, 1080);                 /* call: PLAYER.SetVideoRect */
    this.player.Play();
    if (this.rounds > 3) throw new Error('too long');
  }

  html({ source }) {
    this.root.innerHTML = source;
    this.player.HideVideoPlane();                               /* call: PLAYER.HideVideoPlane */
    if (this.index === 2) throw new Error('no fonts');
  }
}

const signage = new Signage(document.querySelector('main'), PLAYLIST);
signage.start();

document.addEventListener('keydown', (event) => {
  if (event.keyCode !== 403) return;
  const [first] = document.getElementsByTagName('embed');
  first.StepFrame(1);                                           /* call: PLAYER.StepFrame */
  const children = document.body.lastElementChild.children;
  Array.from(children).filter((n) => n.dataset.kind === 'store').forEach((n) => n.VerifyCache());   /* call: FILESTORE.VerifyCache */
});

const canvas = { DrawErrorCode: (n) => `E${n}`, SetDither: () => canvas };
document.title = canvas.SetDither(true).DrawErrorCode(0);       /* decoy */
