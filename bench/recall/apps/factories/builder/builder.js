const PluginBuilder = class {
  #kind; #attrs = {}; #host = document.getElementById("mount");
  static for(kind) { const b = new PluginBuilder(); b.#kind = kind; return b; }
  id(v) { this.#attrs.id = v; return this; }
  attr(k, v) { this.#attrs[k] = v; return this; }
  under(host) { this.#host = host; return this; }
  build() {
    const o = document.createElement("object");
    for (const [k, v] of Object.entries({ ...this.#attrs, classid: `clsid:MORVANE-NAVERTIX-${this.#kind}` })) o.setAttribute(k, v);
    return this.#host.appendChild(o);
  }
};
const h = (tag, props = {}, ...kids) => {
  const el = document.createElement(tag);
  Object.keys(props || {}).forEach((k) => (k.startsWith("on") ? el.addEventListener(k.slice(2), props[k]) : el.setAttribute(k, props[k])));
  kids.flat().forEach((k) => el.append(k));
  return el;
};
const Locator = { services: new Map(), provide(k, f) { this.services.set(k, f); }, resolve(k) { const f = this.services.get(k); return f(this); } };
