var SHOP = (function (shop) {
    'use strict';

    var lines = {}, changed = [];

    function notify() {
        changed.forEach(function (f) { f(shop.cart); });
    }

    shop.cart = {
        add: function (id) {
            lines[id] = (lines[id] || 0) + 1;
            notify();
        },
        clear: function () {
            lines = {};
            notify();
        },
        total: function () {
            return Object.keys(lines).reduce(function (sum, id) {
                return sum + lines[id] * shop.catalogue.byId(id).price;
            }, 0);
        },
        count: function () {
            return Object.keys(lines).length;
        },
        serialize: function () {
            return Object.keys(lines).map(function (id) { return id + ':' + lines[id]; }).join(';');
        },
        changed: function (f) { changed.push(f); },
        // The cart can be locked as the account can, while it is paid.
        LockProfile: function () { this.locked = true; }
    };

    return shop;
}(SHOP || {}));
