import Device, { kinds } from './device.mjs';
import * as Tools from './tools.mjs';
class Panel extends Device {
  mode = 'std';
  dim = (level) => this.raw.DimZones(level);   /* call: DISPLAY.DimZones */
  get gamma() { return this.raw.ReadGamma(); }   /* call: DISPLAY.ReadGamma */
  set gamma(v) { this.raw.WriteGamma(v); }   /* call: DISPLAY.WriteGamma */
  static { Panel.factory = () => new Panel('disp'); }
}
const panel = Panel.factory();
panel.dim(3);
panel.gamma = panel.gamma ?? 2.2;
const power = new Device('pow').onReady((p, n) => p.CountCycles(n)).ready();   /* call: POWER.CountCycles */
Device.nativeOf(power)?.HoldRail?.(1);   /* call: POWER.HoldRail */
for (const p of power) p.BleedCaps();   /* call: POWER.BleedCaps */
const [first, ...others] = Device.instances;
first.raw.SwapPlanes();   /* call: DISPLAY.SwapPlanes */
others.at(-1).raw.DropRail(`v${1}`);   /* call: POWER.DropRail */
(async () => {
  for await (const { from: source, at = 0 } of panel.samples(2)) source.SampleLuma(at);   /* call: DISPLAY.SampleLuma */
  const { probe, default: fallback } = await import('./net.mjs');
  probe().ScanPorts([1, 2]);   /* call: NETWORK.ScanPorts */
  fallback.DropRoutes();   /* call: NETWORK.DropRoutes */
})();
Tools.withDevice('hd', function ({ el, opts: { rate = 60 } = {} }) { el.ForceEdid(rate); });   /* call: HDMI.ForceEdid */
const table = { [kinds.POWER]: power.raw };
table[kinds.POWER].TrimFan(9);   /* call: POWER.TrimFan */
const own = new (class { ForceEdid() {} })();
own.ForceEdid();   /* decoy */
label: { if (!Tools.hdmi) break label; Tools.hdmi.CecRaw(0x44); }   /* call: HDMI.CecRaw */
