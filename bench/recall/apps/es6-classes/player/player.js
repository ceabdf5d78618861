const $id = (id) => document.getElementById(id);

class Plugin {
  static made = 0;
  static of(id) { return new this($id(id)); }
  constructor(el) { this.el = el; Plugin.made++; this.ready(); }
  ready() {}
  get raw() { return this.el; }
}

class Drm extends Plugin {
  ready() { this.el.SetSecureClock("2026-01-01"); }   /* call: DRM.SetSecureClock */
  async acquire(url) {
    this.el.AcquireLicense(url);
    return this.el.ProvisionDevice(url, { retries: 3 });   /* call: DRM.ProvisionDevice */
  }
}

class Meter {
  #p;
  #timer = null;
  constructor() { this.#p = $id("bw"); }
  #probe() { return this.#p.InjectPackets(1); }   /* call: BANDWIDTH.InjectPackets */
  measure() {
    this.#p.StartMeasurement();
    this.#timer = setTimeout(() => this.#p.GetJitter(), 1);   /* call: BANDWIDTH.GetJitter */
    return this.#probe();
  }
  set plugin(v) { this.#p = v; }
  static #instance;
  static get() { return (Meter.#instance ??= new Meter()); }
  peek = () => this.#p.GetQueueDepth();   /* call: BANDWIDTH.GetQueueDepth */
}

class Player extends Plugin {
  #drm;
  state = "idle";
  constructor(el, drm = Drm.of("drm")) {
    super(el);
    this.#drm = drm;
    this.el.SetDecryptor(1);   /* call: PLAYER.SetDecryptor */
  }
  play(url) {
    super.raw.Open(url);
    super.raw.SetStartBitrate(4e6);   /* call: PLAYER.SetStartBitrate */
    this.#drm.raw.GetKeyIds?.();   /* call: DRM.GetKeyIds */
    this.onKey = ({ keyCode }) => keyCode === 413 && this.el.FlushPipeline();   /* call: PLAYER.FlushPipeline */
    document.addEventListener("keydown", this.onKey);
    return this;
  }
  ["step" + "Frame"](n) { this.el?.StepFrames(n ?? 1); return this; }   /* call: PLAYER.StepFrames */
  static #mock() { return { StepFrames() {}, GetJitter() {} }; }
  static test() { const m = Player.#mock(); m.StepFrames(1); m.GetJitter(); }   /* decoy */
  static { Player.defaults = { el: $id("pl") }; Player.defaults.el.WarmUp(); }   /* call: PLAYER.WarmUp */
}

const Retrying = (Base) => class extends Base {
  retry(n = 2) { for (let i = 0; i < n; i++) this.el.ReopenSource(i); return this; }   /* call: PLAYER.ReopenSource */
};
class Robust extends Retrying(Player) {}

const player = Robust.of("pl").play(`http://cdn.example/${Plugin.made}.mpd`).stepFrame(1).retry();
player.raw.GetHdcpLevel();   /* call: PLAYER.GetHdcpLevel */
Drm.of("drm").acquire("https://lic.example");
const meter = Meter.get();
meter.measure();
meter.peek();
Player.test();
