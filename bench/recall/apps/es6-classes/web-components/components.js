const PLUGIN = Symbol("plugin");
const registry = new WeakMap();

class TvElement extends HTMLElement {
  static get observedAttributes() { return ["for"]; }
  constructor() {
    super();
    this.attachShadow({ mode: "open" });
    if (new.target === TvElement) throw new TypeError("abstract");
  }
  attributeChangedCallback(name, old, value) {
    this[PLUGIN] = document.getElementById(value);
    this[PLUGIN]?.SetViewport(0, 0);   /* call: TELETEXT.SetViewport */
    registry.set(this, { plugin: this[PLUGIN], since: Date.now() });
  }
  get plugin() { return registry.get(this).plugin; }
}

customElements.define("tv-panel", class extends TvElement {
  #count = 0;
  connectedCallback() {
    this.shadowRoot.innerHTML = "<button id=next>Next</button><slot></slot>";
    this.shadowRoot.getElementById("next").addEventListener("click", this.#next);
    this.shadowRoot.querySelector("button").click();
    this.plugin.ShowPage(100);
    this.plugin.AttachOverlay(this.#count);   /* call: TELETEXT.AttachOverlay */
    this.dispatchEvent(new CustomEvent("tv-ready", { bubbles: true, detail: { plugin: this.plugin } }));
    queueMicrotask(() => this.#refresh());
  }
  #next = () => { this.#count += 1; this[PLUGIN].NextMagazine(this.#count); };   /* call: TELETEXT.NextMagazine */
  #refresh() { const { plugin: p } = this; p.RefreshCarousel(); }   /* call: TELETEXT.RefreshCarousel */
  static from(el) { return Object.assign(document.createElement("tv-panel"), el); }
});

customElements.define("tv-camera", class extends HTMLElement {
  #device;
  connectedCallback() {
    this.innerHTML = `<object classid="clsid:MORVANE-NAVERTIX-CAMERA"></object>`;
    this.#device = this.querySelector("object");
    this.#device.SetFps(50);   /* call: CAMERA.SetFps */
    this.on("click", (e) => this.#device.SnapBurst(e.detail));   /* call: CAMERA.SnapBurst */
  }
  on(name, fn) { this.addEventListener(name, fn); return this; }
  set zoom(n) { this.#device.SetZoom(n); this.#device.SetZoomCurve(n); }   /* call: CAMERA.SetZoomCurve */
  get device() { return this.#device; }
  static { this.prototype.kind = "camera"; }
});

document.querySelector("tv-camera").zoom = 2;
document.querySelector("tv-camera").device.ReadExif();   /* call: CAMERA.ReadExif */
document.querySelector("tv-panel").plugin.DumpCache();   /* call: TELETEXT.DumpCache */
class Stub { #p = { DumpCache() {}, SetFps() {} }; run() { this.#p.DumpCache(); this.#p.SetFps(25); } }   /* decoy */
new Stub().run();
export class Late { static late = setTimeout(() => Late.go(document.getElementById("tt")), 3); static go(p) { p.SetReveal(1); } }   /* call: TELETEXT.SetReveal */
