var titles = ["intro", "walk", "night"];
var player = document.embeds[0];
var files = document.embeds["store"];

function playTitle(n) {
    player.Open(titles[n] + ".mp3");
    player.SetReplayGain(-6);   /* call: PLAYER.SetReplayGain */
    player.Play();
    document.embeds[0].QueueNext(titles[n + 1]);   /* call: PLAYER.QueueNext */
}

function listTitles() {
    var box = document.getElementById("titles");
    files.ListFiles("/music");
    files.MountUsb(0);   /* call: FILESTORE.MountUsb */
    document.embeds["store"].ScanTags("/music");   /* call: FILESTORE.ScanTags */
    document.store.GetFreeSpace();
    document.store.SpinDown();   /* call: FILESTORE.SpinDown */
    box.innerHTML = titles.join("<br>");
}

function blinkLed() {
    window.led.SetLedColour(255, 0, 0);   /* call: LIGHTSENSOR.SetLedColour */
    document.embeds.led.Blink(3);   /* call: LIGHTSENSOR.Blink */
    document.embeds.item(2).GetLevel();
    document.embeds.item(2).GetRawCounts();   /* call: LIGHTSENSOR.GetRawCounts */
    for (var i = 0; i < document.images.length; i++) { document.images[i].SpinDown(); }   /* decoy */
}

function stopAll() {
    for (var i = 0; i < document.embeds.length; i++) {
        var e = document.embeds[i];
        if (e.getAttribute("name") == "player") { e.EjectMedia(); }   /* call: PLAYER.EjectMedia */
    }
    document.embeds.namedItem("player").ReleaseDecoder();   /* call: PLAYER.ReleaseDecoder */
    document.getElementsByName("store")[0].SyncJournal();   /* call: FILESTORE.SyncJournal */
}

listTitles();
playTitle(0);
blinkLed();
window.onload = stopAll;
