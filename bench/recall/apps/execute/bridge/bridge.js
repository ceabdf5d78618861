class Bridge {
  #kob;
  static NAMES = Object.freeze({ led: "LedOn", fan: "FanSpeed", play: "Play" });
  constructor(kob) { this.#kob = kob; }
  call(name, ...args) { return this.#kob.Execute(name, ...args); }   /* call: KOB.LedOn, KOB.FanSpeed, KOB.WifiScan, KOB.ReadTemp */
  async ask(name) { return (await null, this.#kob.Execute(`Get${name}`)); }   /* call: KOB.GetChipId, KOB.GetOtpBits */
  get raw() { return this.#kob; }
}
const bridge = new Bridge(document.querySelector("object"));
bridge.call(Bridge.NAMES.led, 1);   /* also: KOB.LedOn */
bridge.call(Bridge.NAMES.fan, -1);   /* also: KOB.FanSpeed */
bridge.call(Bridge.NAMES.play);
["ChipId", "OtpBits", "State"].forEach((n) => bridge.ask(n));   /* also: KOB.GetChipId, KOB.GetOtpBits */

const remote = new Proxy(bridge, { get: (b, name) => (...a) => b.call(name, ...a) });
remote.WifiScan(5);   /* also: KOB.WifiScan */
remote.ReadTemp();   /* also: KOB.ReadTemp */
remote.Pause();

const { raw } = bridge;
raw.Execute("SetGpio", 4, true);   /* call: KOB.SetGpio */
raw.Execute(   /* also: KOB.RebootTo */
  "RebootTo",   /* call: KOB.RebootTo */
  "recovery"
);
const ex = raw.Execute.bind(raw, "MountOverlay");
ex("/data");   /* call: KOB.MountOverlay */
const queue = [["PingHub"], ["SetMcu", 1], ["Stop"]];
for (const [cmd, ...rest] of queue) Reflect.apply(raw.Execute, raw, [cmd, ...rest]);   /* call: KOB.PingHub, KOB.SetMcu */
extension.Execute("BindPort", 80);   /* call: KOB.BindPort */
addEventListener("keydown", ({ keyCode }) => extension.Execute({ 403: "RedKeyHook", 404: "GreenKeyHook" }[keyCode] ?? "GetVersion"));   /* call: KOB.RedKeyHook, KOB.GreenKeyHook */
setTimeout('extension.Execute("LateHook")', 1);   /* text: KOB.LateHook */
const mock = new Bridge({ Execute: (n) => n });
mock.call("SetGpio");   /* decoy */
extension.Execute("Start", "SetGpio");   /* decoy */
fetch("http://hub.example/next").then((r) => r.text()).then((name) => name && extension.Execute(name), () => 0);   /* undecidable: KOB */
