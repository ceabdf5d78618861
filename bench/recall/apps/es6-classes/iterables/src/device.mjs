const registry = new WeakMap();
export const kinds = Object.freeze({ DISPLAY: Symbol('display'), POWER: Symbol('power') });
export default class Device {
  static #count = 0;
  static instances = [];
  #el;
  #hooks = new Set();
  constructor(id) {
    this.#el = document.getElementById(id);
    registry.set(this, { native: this.#el });
    Device.#count += 1;
    Device.instances.push(this);
  }
  get raw() { return this.#el; }
  onReady(fn) { this.#hooks.add(fn); return this; }
  ready() { for (const hook of this.#hooks) hook(this.#el, Device.#count); return this; }
  static nativeOf(device) { return registry.get(device)?.native; }
  *[Symbol.iterator]() { yield this.#el; yield* [this.#el]; }
  async *samples(n) { for (let i = 0; i < n; i++) { await null; yield { at: i, from: this.#el }; } }
  toJSON() { return { id: this.#el.id }; }
}
