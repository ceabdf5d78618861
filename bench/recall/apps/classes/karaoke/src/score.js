export class Score {
  #hits = 0;
  #notes = 0;

  note(expected, sung) {
    this.#notes += 1;
    if (Math.abs(expected - sung) < 2) this.#hits += 1;
  }

  get percent() {
    return this.#notes ? Math.round((100 * this.#hits) / this.#notes) : 0;
  }

  // Scores are compared with what the microphone says of itself, under the same name.
  GetPitch() {
    return this.#hits;
  }
}
