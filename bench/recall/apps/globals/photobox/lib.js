// little helpers, used by all our pages
function $(id) { return document.getElementById(id); }

function Album(name) {
    this.name = name;
    this.photos = [];
    this.Sort = function () { this.photos.sort(); };
    this.Insert = function (file) { this.photos[this.photos.length] = file; };
    this.Erase = function (n) { this.photos.splice(n, 1); };
    this.Crop = function (from, to) { this.photos = this.photos.slice(from, to); };
    this.Stamp = function () { return this.name + "/" + this.photos.length; };
}

function Frame(id) {
    this.id = id;
    this.angle = 0;
    this.Rotate = function (by) { this.angle += by; this.Paint(); };            /* decoy */
    this.Paint = function () { $(this.id).title = this.angle; };
    this.Fill = function (text) { $(this.id).innerHTML = text; };
}
