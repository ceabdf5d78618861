const wait = (ms) => new Promise((done) => setTimeout(done, ms));

export class CloudClient {
  static instance;
  static Shared() { return (CloudClient.instance ??= new CloudClient('https://cloud.example')); }
  queue = [];
  constructor(base) { this.base = base; }
  SetKeepFlag(id, on) { this.queue.push(['keep', id, on]); }
  Defragment() { this.queue.push(['defrag']); }
  MakeThumbnail(id, width) { return `${this.base}/thumb/${id}/${width}.jpg`; }
  Transcode(id, format) { this.queue.push(['transcode', id, format]); }
  async Upload() {
    while (this.queue.length) {
      await wait(1);
      this.queue.shift();
    }
    return this;
  }
}
