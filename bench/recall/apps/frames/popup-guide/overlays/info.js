// In this frame `live` is the screen; in the one above it is the broadcast.
var live = document.getElementById("live");
var up = window.parent.document;

live.SetOverlayPriority(5);   /* call: SCREEN.SetOverlayPriority */
up.getElementById("live").GetServiceLogo();   /* call: BROADCAST.GetServiceLogo */

function flash(plugin) {
    document.getElementById("text").textContent = plugin.GetNowPlaying();   /* call: BROADCAST.GetNowPlaying */
    live.FlashOverlay();   /* call: SCREEN.FlashOverlay */
}

document.body.onclick = function () {
    parent.host.plugins.live.RequestKeyFrame();   /* call: BROADCAST.RequestKeyFrame */
    fakeHost.plugins.live.FadeIn(1);   /* decoy */
};

var fakeHost = { plugins: { live: { FadeIn: function () {} } } };
