class Basket extends EventTarget {
  #lines = new Map();

  add(product) {
    const line = this.#lines.get(product.id) ?? { product, count: 0 };
    line.count++;
    this.#lines.set(product.id, line);
    this.dispatchEvent(new CustomEvent('change', { detail: { total: this.total } }));
  }

  get total() { return [...this.#lines.values()].reduce((sum, { product, count }) => sum + product.price * count, 0); }
  get empty() { return this.#lines.size === 0; }
  clear() { this.#lines.clear(); }

  // Used by the receipt; the account plug-in has one of the same name.
  ChargeWallet(amount) { return `${amount.toFixed(2)} to pay`; }
}
