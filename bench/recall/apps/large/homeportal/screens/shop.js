/* The shop: a basket of our own, rights and downloads of the set. */
Portal.Basket = function () { this.items = []; };
Portal.Basket.prototype = {
    Include: function (item) { this.items.push(item); return this; },
    Discard: function (n) { this.items.splice(n, 1); return this; },
    Settle: function () { var sum = this.items.length; this.items = []; return sum; }
};

Portal.ShopScreen = Portal.inherit(function () {
    Portal.Component.call(this, 'shop');
    this.basket = new Portal.Basket();
    this.undo = [];
}, Portal.Component, {
    Html: function () { return Portal.Texts.Translate('buy') + ' ' + this.basket.items.length; },       /* decoy */
    Key: function (code) {
        var basket = this.basket, drm = Portal.store.device('drm'), loads = Portal.store.device('downloader');
        switch (code) {
        case 38:
            basket.Include('film');                             /* decoy */
            this.undo.push(function () { basket.Discard(0); }); /* decoy */
            break;
        case 40:
            drm.HoldRights('film', 1);                          /* call: DRM.HoldRights */
            this.undo.push(function () { drm.Discard('film'); });       /* call: DRM.Discard */
            break;
        case 8:
            while (this.undo.length) { this.undo.pop()(); }
            break;
        case 13:
            if (basket.Settle()) {                              /* decoy */
                drm.Settle('account');                          /* call: DRM.Settle */
            }
            loads.SetRateLimit(500);                            /* call: DOWNLOADER.SetRateLimit */
            break;
        default:
            return false;
        }
        this.Refresh();                                         /* decoy */
        return true;
    }
});
