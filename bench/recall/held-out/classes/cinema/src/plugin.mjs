/** A plug-in of the page. Subclasses give it a life. */
export default class Plugin {
  #element;
  static registry = new Map();

  constructor(id) {
    this.#element = document.getElementById(id);
    Plugin.registry.set(id, this);
  }

  get native() { return this.#element; }

  open(...args) { this.native.Open(...args); return this; }

  close() { this.native.Close(); }

  static closeAll() {
    for (const plugin of Plugin.registry.values()) plugin.close();
  }
}
