class Library {
  constructor() {
    this.recorder = tv.byId('rec');
    this.files = tv.byId('fs');
    this.thumbnail = tv.promisify(this.recorder, 'CreateThumbnail');   /* also: RECORDER.CreateThumbnail */
    this.cache = new Map();
  }

  async list() {
    const raw = await tv.call(this.recorder, 'GetRecordingList');
    const series = await tv.call(this.recorder, 'GetSeriesList');   /* also: RECORDER.GetSeriesList */
    const titles = Array.isArray(raw) ? raw : ['Film of the week', 'Match', `Series ${series}`];
    return titles.map((title, id) => ({ id, title, locked: false }));
  }

  async picture(item) {
    if (!this.cache.has(item.id)) {
      this.cache.set(item.id, this.thumbnail(item.id, 160, 90));
    }
    return this.cache.get(item.id);
  }

  async lock(item) {
    await tv.call(this.recorder, 'ProtectRecording', item.id, true);   /* also: RECORDER.ProtectRecording */
    item.locked = true;
    return item;
  }

  async space() {
    const [free, label] = await Promise.all([
      tv.call(this.files, 'GetFreeSpace'),
      tv.call(this.files, 'GetVolumeLabel'),   /* also: FILESTORE.GetVolumeLabel */
    ]);
    return { free, label };
  }

  async check() {
    try {
      await tv.call(this.files, 'CheckVolume', 'quick');   /* also: FILESTORE.CheckVolume */
    } finally {
      this.files.SyncVolume();   /* call: FILESTORE.SyncVolume */
    }
  }

  async copy(item, target) {
    await null;
    this.recorder.ExportRecording(item.id, target);   /* call: RECORDER.ExportRecording */
  }
}
