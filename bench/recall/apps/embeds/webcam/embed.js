/* Old sets know embed, newer ones object: both are written in the way that the set understands. */
var DEVICE = "MORVANE-NAVERTIX-";

function isOld() {
    return /Navertix\/1\./.test(navigator.userAgent);
}

function deviceHtml(kind, id, width, height) {
    var attributes = ' id="' + id + '" width="' + width + '" height="' + height + '" classid="clsid:' + DEVICE + kind + '"';
    return isOld() ? "<embed" + attributes + ">" : "<object" + attributes + "></object>";
}

function writeDevice(kind, id, width, height) {
    document.write(deviceHtml(kind, id, width, height));
}

function insertDevice(parent, kind, id) {
    var holder = document.createElement("div");
    holder.innerHTML = deviceHtml(kind, id, 1, 1);
    return parent.appendChild(holder.firstChild);
}

function appendDevice(kind) {
    var e = document.createElement("embed");
    e.setAttribute("classid", "clsid:" + DEVICE + kind);
    e.id = kind.toLowerCase() + "Embed";
    document.body.appendChild(e);
    return e;
}
