import { cut } from "./store.js";

export default class Recorder {
  #p;
  constructor(p) { this.#p = p; this.#p.ReserveSpace(1e9); }   /* call: RECORDER.ReserveSpace */
  async start(n) {
    this.#p.Start(n);
    await null;
    this.#p.SetSplitSize(n);   /* call: RECORDER.SetSplitSize */
    cut(this.#p);
    return { MarkCommercial: (m) => this.#p.MarkCommercial(m) };   /* call: RECORDER.MarkCommercial */
  }
  stop() { this.#p.FinalizeFile(); }   /* call: RECORDER.FinalizeFile */
}
