import { DiskLibrary, CloudLibrary, Library } from './library.js';
import { CloudClient } from './client.js';

const recorder = document.getElementById('recorder');
const storage = document.querySelector('#storage');

const disk = new DiskLibrary(recorder);
const cloud = new CloudLibrary(CloudClient.Shared());                   /* decoy */
const libraries = [disk, cloud];
const trash = new Library('trash');

const view = {
  main: document.querySelector('main'),
  render() {
    this.main.innerHTML = libraries.map((library) => library.items.map((item) =>
      `<p data-library="${library.name}" data-id="${item.id}">
         <img src="${library.Thumbnail(item.id)}"> ${item.title}</p>`).join('')).join('');     /* decoy */
  },
};

// Works for each library alike.
function tidy() {
  libraries.forEach((library) => library.Compact());                    /* decoy */
  trash.Compact();                                                      /* decoy */
}

class Quota {
  constructor(store) { this.store = store; }
  get free() { return this.store.GetQuota() - this.store.GetUsedSpace(); }
  Reserve(bytes) { this.store.ReserveBlock(bytes); return this; }       /* call: STORAGE.ReserveBlock */
  Commit() { this.store.CommitBlock(); }                                /* call: STORAGE.CommitBlock */
}
/** The provider counts hours, not bytes. */
class HoursQuota extends Quota {
  constructor() { super(null); this.hours = 100; }
  get free() { return this.hours; }
  Reserve(hours) { this.hours -= hours; return this; }
  Commit() { view.render(); }
}

const quota = { disk: new Quota(storage), cloud: new HoursQuota() };

document.addEventListener('keydown', async ({ keyCode }) => {
  if (keyCode === 403) disk.lockAll();
  if (keyCode === 404) cloud.lockAll();
  if (keyCode === 405) disk.items.forEach(({ id }) => disk.Unprotect(id));    /* decoy */
  if (keyCode === 406) {
    recorder.Transcode(2, 'mp4');                                       /* call: RECORDER.Transcode */
    cloud.Transcode(71, 'mp4');                                         /* decoy */
    await CloudClient.Shared().Upload();                                /* decoy */
    recorder.Upload(2);                                                 /* call: RECORDER.Upload */
  }
  if (keyCode === 13) quota.disk.Reserve(1e6).Commit();                 /* decoy */
  if (keyCode === 8) quota.cloud.Reserve(2).Commit();                   /* decoy */
  if (keyCode === 27) tidy();
});
view.render();
storage.SetWearLevel(1);                                                /* call: STORAGE.SetWearLevel */
