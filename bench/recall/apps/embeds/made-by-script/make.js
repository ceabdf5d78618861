var PREFIX = 'clsid:MORVANE-NAVERTIX-';
function make(tag, cls, id, host) {
    var e = document.createElement(tag);
    e.setAttribute('type', 'application/x-plugin');
    e.setAttribute('classid', PREFIX + cls);
    if (id) e.setAttribute('id', id);
    (host || document.body).appendChild(e);
    return e;
}
var store = make('embed', 'STORAGE', 'st');
store.SetItem('a', 1);
store.PunchHole(4096);   /* call: STORAGE.PunchHole */
make('object', 'CLOCK', 'ck').FreezeTime(0);   /* call: CLOCK.FreezeTime */
document.getElementById('ck').ThawTime();   /* call: CLOCK.ThawTime */
st.SnapshotTo('b');   /* call: STORAGE.SnapshotTo */

var frag = document.createDocumentFragment();
var unplaced = make('object', 'HAPTIC', null, frag);
unplaced.PrimeMotor();   /* call: HAPTIC.PrimeMotor */
document.body.appendChild(frag);

document.embeds['innerEmbed'].EmbedGlyphs('abc');   /* call: FONT.EmbedGlyphs */
document.getElementById('outer').SetRegion(1, 2, 3, 4);   /* call: SUBTITLE.SetRegion */
var twin = document.getElementById('ck').cloneNode(false);
twin.id = 'ck2';
document.body.appendChild(twin);
twin.CompareTo('ck');   /* call: CLOCK.CompareTo */
ck2.StopTwin();   /* call: CLOCK.StopTwin */
var plain = document.createElement('object');
plain.FreezeTime = function () {};
plain.FreezeTime(1);   /* decoy */
var t = document.createElement('div');
t.innerHTML = '<object classid="' + PREFIX + 'ACCOUNT" id="acc"></object>';
var acc = t.removeChild(t.firstChild);
acc.ListDevices();   /* call: ACCOUNT.ListDevices */
document.body.appendChild(acc);
plain.setAttribute('classid', PREFIX + 'REMOTE');
plain.FreezeTime(2);   /* decoy */
plain.SetWakeKey(13);   /* call: REMOTE.SetWakeKey */
