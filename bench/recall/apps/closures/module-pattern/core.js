var TV = TV || {};
TV.ns = function (path) {
    var parts = path.split("."), o = window;
    for (var i = 0; i < parts.length; i++) { o = o[parts[i]] = o[parts[i]] || {}; }
    return o;
};
TV.plug = (function () {
    var seen = {};
    return {
        get: function (id) { return seen[id] || (seen[id] = document.getElementById(id)); },
        reset: function () { seen = {}; }
    };
}());
