// Small helpers. Every page of the portal has them.
function $(id) { return document.getElementById(id); }
function $q(sel) { return document.querySelector(sel); }
function byId(a) { return typeof a == "string" ? document.getElementById(a) : a; }
function plugin(name) {
    var e = byId(name);
    if (!e) { throw new Error("no " + name); }
    return e;
}
var Dom = {
    cache: {},
    get: function (id) {
        if (!this.cache[id]) { this.cache[id] = document.getElementById(id); }
        return this.cache[id];
    },
    text: function (id, t) { $(id).innerHTML = t; }
};
