// The tree of folders as the page shows it.
function Folder(name) {
    this.name = name;
    this.children = [];
    this.size = 0;
    this.expanded = false;
}
Folder.prototype.Attach = function (child) { this.children.push(child); return this; };
Folder.prototype.Walk = function (visit) {
    visit(this);
    for (var i = 0; i < this.children.length; i++) {
        this.children[i].Walk(visit);                           /* decoy */
    }
};
Folder.prototype.Shrink = function (by) { this.size = Math.max(0, this.size - by); };
Folder.prototype.Toggle = function () { this.expanded = !this.expanded; };
Folder.prototype.Recount = function () {
    var sum = 0;
    this.Walk(function (folder) { sum += folder.size; });       /* decoy */
    return sum;
};

function File(name, size) { this.name = name; this.size = size; }
File.prototype.Walk = function (visit) { visit(this); };
File.prototype.Shrink = function () { this.size = this.size >> 1; };
File.prototype.Toggle = function () {};
