Container.value("mock", { EmitPulse: function () { }, SetAddress: function () { } });
Container.call(function (lamp, remote, mock) {
    lamp.dim(3);
    remote.buzz();
    remote.radio().SniffPackets(5);   /* call: BLUETOOTH.SniffPackets */
    mock.EmitPulse();   /* decoy */
    mock.SetAddress();   /* decoy */
});
Container.get("radio").SetAddress("00:11");   /* call: BLUETOOTH.SetAddress */
Factory.make("light").ReadSpectrum();   /* call: LIGHTSENSOR.ReadSpectrum */
var made = Factory.make("GAMEPAD");
made.Open();
made.RumbleMotor(1);   /* call: GAMEPAD.RumbleMotor */
document.getElementById("madeGAMEPAD").PairSecret("x");   /* call: GAMEPAD.PairSecret */
function PadAdapter(pad) { return { count: function () { return pad.GetPadCount() + pad.GetDongleId(); } }; }   /* call: GAMEPAD.GetDongleId */
new PadAdapter(made).count();
(function build(maker) { return maker("DOWNLOADER"); })(Factory.make).SetPeerMode(1);   /* call: DOWNLOADER.SetPeerMode */
