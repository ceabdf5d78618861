var SHOP = (function (shop, doc) {
    'use strict';

    var devices = shop.devices = {
        security: doc.getElementById('sec'),
        crypto: doc.getElementById('cry'),
        account: doc.getElementById('acc')
    };

    function sign(text) {
        var handle = devices.crypto.OpenKeySlot('shop');            /* call: CRYPTO.OpenKeySlot */
        var signature = devices.crypto.Sign(text, handle);
        devices.crypto.CloseKeySlot(handle);                        /* call: CRYPTO.CloseKeySlot */
        return signature;
    }

    function customer() {
        var a = devices.account;
        if (!a.IsSignedIn()) {
            a.SignIn();
        }
        return { name: a.GetUserName(), address: a.GetPostalAddress() };   /* call: ACCOUNT.GetPostalAddress */
    }

    function order(pin) {
        var text, c;
        if (!devices.security.CheckPin(pin)) {
            return 'wrong PIN';
        }
        shop.cart.LockProfile();                                    /* decoy */
        devices.account.LockProfile(30);                            /* call: ACCOUNT.LockProfile */
        c = customer();
        text = [c.name, c.address, shop.cart.serialize(), devices.crypto.GetTrustedTime()].join('|');   /* call: CRYPTO.GetTrustedTime */
        send(text, sign(text));
        return 'thank you';
    }

    function send(text, signature) {
        var request = new XMLHttpRequest();
        request.open('POST', 'https://shop.example/orders');
        request.setRequestHeader('X-Signature', signature);
        request.onload = request.onerror = function () {
            devices.account.AddPurchase(shop.cart.total());         /* call: ACCOUNT.AddPurchase */
            shop.cart.clear();
        };
        request.send(text);
    }

    shop.checkout = { order: order };
    return shop;
}(SHOP || {}, document));
