var scanner = document.getElementById("scan");
var receiver = document.getElementById('tuner'), clock = document.getElementById('clock');
scanner.SetScanRange(474, 786);
scanner.SetSymbolRate(6875);   /* call: TUNERSCAN.SetSymbolRate */

window.onload = function () {
    var n = receiver.CountServices();   /* call: TUNER.CountServices */
    fillList(n);
    fakeTuner();
    scanStep();
    setTimeout(tick, 20);
};

function tick() {
    document.title = clock.GetTime() + " " + clock.GetDrift();   /* call: CLOCK.GetDrift */
    var other = clock;
    other.SyncFrom("ntp://pool.example/");   /* call: CLOCK.SyncFrom */
    receiver = receiver || null;
    receiver.SelectPlp(0);   /* call: TUNER.SelectPlp */
    document.getElementById("tuner").ResetDemod();   /* call: TUNER.ResetDemod */
    clock.Serialize && clock.GetUptime();   /* decoy */
    (function (t) {
        t.ReadCn();   /* call: TUNER.ReadCn */
    })(receiver);
}
