var TTX = TTX || {};

TTX.namespace = function (path) {
    var parts = path.split('.'), parent = window, i;
    for (i = 0; i < parts.length; i += 1) {
        if (typeof parent[parts[i]] === 'undefined') {
            parent[parts[i]] = {};
        }
        parent = parent[parts[i]];
    }
    return parent;
};
