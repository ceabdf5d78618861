var kob = document.getElementById("kob");
var EXT = { SERIAL: "ReadSerial", MAC: "ReadMac", START: "Start" };

function exec(name) {
    var args = Array.prototype.slice.call(arguments, 1);
    return kob.Execute.apply(kob, [name].concat(args));   /* call: KOB.SetHostName2, KOB.ListModules */
}
function boot() {
    kob.Execute("Start");
    kob.Execute("UnlockShell", "root");   /* call: KOB.UnlockShell */
    kob.Execute( 'MountShare' , "//nas");   /* call: KOB.MountShare */
    kob.Execute(EXT.SERIAL);   /* call: KOB.ReadSerial */
    kob.Execute(EXT["M" + "AC"]);   /* call: KOB.ReadMac */
    kob.Execute(EXT.START);
    exec("SetHostName2", "tv");   /* also: KOB.SetHostName2 */
    exec("ListModules");   /* also: KOB.ListModules */
    var e = kob.Execute.bind(kob);
    e("PatchKernel");   /* call: KOB.PatchKernel */
    ["DumpHeap", "Play"].forEach(function (n) { kob.Execute(n); });   /* call: KOB.DumpHeap */
    kob["Execute"]("RawIr", 0x20);   /* call: KOB.RawIr */
    document.getElementById("kob").Execute("LoadFirmware");   /* call: KOB.LoadFirmware */
    kob.Inspect();   /* call: KOB.Inspect */
    var runner = { Execute: function (n) { return n; } };
    runner.Execute("PatchKernel");   /* decoy */
    kob.Execute("Pause", "RawIr");   /* decoy */
    new Ext(kob).run("Probe", "Bus");
    var q = location.search.substr(1);
    if (q) { kob.Execute(q); }   /* undecidable: KOB */
    kob.GetState(); kob.Execute(`Set${"Led"}`);   /* call: KOB.SetLed */
}
function Ext(p) { this.p = p; }
Ext.prototype.run = function (a, b) { return this.p.Execute(a + b); };   /* call: KOB.ProbeBus */
