var SHOP = (function (shop) {
    'use strict';

    var articles = [
        { id: 'hat', title: 'Fan hat', price: 1490 },
        { id: 'mug', title: 'Mug', price: 890 },
        { id: 'tee', title: 'T-shirt', price: 1990 },
        { id: 'film', title: 'Film rental', price: 399, rating: 16 }
    ];

    shop.catalogue = {
        all: function () { return articles.slice(); },
        byId: function (id) {
            return articles.filter(function (a) { return a.id === id; })[0];
        },
        allowed: function (article) {
            if (!article.rating) { return true; }
            var limit = shop.devices.security.GetRatingLimit();
            shop.devices.security.LogAccess(article.id, limit);     /* call: SECURITY.LogAccess */
            return limit <= article.rating;
        }
    };

    return shop;
}(SHOP || {}));
