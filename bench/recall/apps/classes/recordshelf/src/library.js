/** Where recordings are kept. Subclasses say how one is removed, protected and moved. */
export class Library {
  constructor(name) {
    this.name = name;
    this.items = [];
  }
  Protect(id) { this.find(id).locked = true; }
  Unprotect(id) { this.find(id).locked = false; }
  Compact() { this.items = this.items.filter((item) => !item.gone); }
  find(id) { return this.items.find((item) => item.id === id) || { id }; }

  lockAll() {
    for (const { id } of this.items) this.Protect(id);                  /* decoy */
  }
}

/** On the disk of the set. */
export class DiskLibrary extends Library {
  #recorder;
  constructor(recorder) {
    super('disk');
    this.#recorder = recorder;
    this.items.push({ id: 1, title: 'Film' }, { id: 2, title: 'News' });
  }
  Protect(id) {
    super.Protect(id);                                                  /* decoy */
    this.#recorder.SetKeepFlag(id, true);                               /* call: RECORDER.SetKeepFlag */
  }
  Unprotect(id) {
    super.Unprotect(id);                                                /* decoy */
    this.#recorder.ClearKeepFlag(id);                                   /* call: RECORDER.ClearKeepFlag */
  }
  Compact() {
    super.Compact();                                                    /* decoy */
    this.#recorder.Defragment({ background: true });                    /* call: RECORDER.Defragment */
  }
  Thumbnail(id) { return this.#recorder.MakeThumbnail(id, 320); }       /* call: RECORDER.MakeThumbnail */
}

/** At the provider's. There is nothing of the set in it. */
export class CloudLibrary extends Library {
  #client;
  constructor(client) {
    super('cloud');
    this.#client = client;
    this.items.push({ id: 71, title: 'Series' });
  }
  Protect(id) {
    super.Protect(id);                                                  /* decoy */
    this.#client.SetKeepFlag(id, true);                                 /* decoy */
  }
  Compact() { this.#client.Defragment(); }                              /* decoy */
  Thumbnail(id) { return this.#client.MakeThumbnail(id, 640); }         /* decoy */
  Transcode(id, format) { return this.#client.Transcode(id, format); }  /* decoy */
}
