'use strict';

/** A job of the page: something that takes a while, can be cancelled, and tells how far it is. */
class Job {
  constructor(title, work) {
    this.title = title;
    this.work = work;
    this.progress = 0;
  }
  async Run() {
    for await (const step of this.work()) this.Advance(step);               /* decoy */
    return this;
  }
  Advance(step) { this.progress += step; }
  CheckDigest() { return this.progress >= 1; }
  Abort(reason) { this.aborted = reason; }
}

class JobQueue {
  #jobs = [];
  #active = null;
  Push(job) {
    this.#jobs.push(job);
    return this.#active ??= this.Drain();                                   /* decoy */
  }
  async Drain() {
    const done = [];
    while (this.#jobs.length) {
      const job = await this.#jobs.shift().Run();                           /* decoy */
      if (job.CheckDigest()) done.push(job);                                     /* decoy */
      else job.Abort('incomplete');                                         /* decoy */
    }
    this.#active = null;
    return done;
  }
}
