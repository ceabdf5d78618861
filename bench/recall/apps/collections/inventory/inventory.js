var ids = ["usb", "flash", "cam", "mic"];
var list = [], byName = {}, map = new Map(), set = new Set(), weak = new WeakMap();

ids.forEach(function (id) {
    var el = document.getElementById(id);
    list.push(el);
    byName[id] = el;
    map.set(id, el);
    weak.set(el, { owner: el });
});
set.add(byName.mic).add(byName.cam);

byName.usb.FormatVolume("fat");   /* call: FILESTORE.FormatVolume */
byName["flash"].EraseBlock(7);   /* call: STORAGE.EraseBlock */
map.get("cam").SetExposure(-1);   /* call: CAMERA.SetExposure */
list[3].SetBeam(30);   /* call: MICROPHONE.SetBeam */
list.slice(2, 3)[0].LockFocus();   /* call: CAMERA.LockFocus */

list.filter(function (p) { return p.id === "mic"; }).forEach(function (p) { p.TuneFilter(440); });   /* call: MICROPHONE.TuneFilter */
var cams = list.filter(function (p) { return p.id == "cam"; });
for (var i = 0; i < cams.length; i++) { cams[i].BurstCapture(3); }   /* call: CAMERA.BurstCapture */

set.forEach(function (p) { if (p.id === "cam") { p.SetPrivacyLed(0); } });   /* call: CAMERA.SetPrivacyLed */
weak.get(byName.usb).owner.ReadSmart();   /* call: FILESTORE.ReadSmart */
for (const [name, p] of map) { if (name === "flash") p.RemapSector(1); }   /* call: STORAGE.RemapSector */
for (const p of set.values()) { p.id === "mic" && p.CancelEcho(true); }   /* call: MICROPHONE.CancelEcho */
[...map.values()].find((p) => p.id === "usb").ScrubJournal();   /* call: FILESTORE.ScrubJournal */
Object.keys(byName).forEach(function (k) { if (k == "mic") { byName[k].DumpPcm(); } });   /* call: MICROPHONE.DumpPcm */
Object.values(byName).pop().SetArray("quad");   /* call: MICROPHONE.SetArray */
Object.entries(byName).forEach(([k, p]) => k === "usb" && p.SetQuotaFlags(0));   /* call: FILESTORE.SetQuotaFlags */

var queue = [];
queue.push({ dev: byName.flash, job: "trim" });
queue.unshift({ dev: byName.cam, job: "pan" });
var job;
while ((job = queue.shift())) {
    if (job.job === "pan") { job.dev.PanTilt(1, 2); }   /* call: CAMERA.PanTilt */
    else { job.dev.TrimFree(); }   /* call: STORAGE.TrimFree */
}
list.concat([]).reduce(function (all, p) { return p.id === "flash" ? p : all; }).CountErases();   /* call: STORAGE.CountErases */
[].concat(byName.cam, byName.mic)[0].SetHdrStack(2);   /* call: CAMERA.SetHdrStack */

var own = new Map([["cam", { SetHdrStack: function () { }, PanTilt: function () { } }]]);
own.get("cam").SetHdrStack(1);   /* decoy */
[own.get("cam")].forEach(function (c) { c.PanTilt(); });   /* decoy */
list.length = 0;
