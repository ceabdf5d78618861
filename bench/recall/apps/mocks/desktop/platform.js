var platform = (function () {
    // Objects of the page that this set has. Accounts and storage came with a later model.
    var ids = { pad: 'pad', haptic: 'haptic', account: 'accountPlugin', storage: 'storagePlugin' };
    var cache = {};

    function real(name) {
        return document.getElementById(ids[name]);
    }

    function get(name) {
        if (!cache[name]) {
            cache[name] = real(name) || mocks[name];
        }
        return cache[name];
    }

    return { get: get, isReal: function (name) { return !!real(name); } };
}());
