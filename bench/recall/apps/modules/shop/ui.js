(function (shop) {
    'use strict';

    var $ = document.getElementById.bind(document);
    var keyboard = $('kbd');
    var cursor = 0;

    function money(cents) { return (cents / 100).toFixed(2) + ' €'; }

    function drawList() {
        $('list').innerHTML = shop.catalogue.all().map(function (a, i) {
            return '<p data-id="' + a.id + '"' + (i === cursor ? ' class="focus"' : '') + '>' + a.title + ' ' +
                money(a.price) + '</p>';
        }).join('');
    }

    shop.cart.changed(function (cart) {
        $('cart').innerHTML = cart.count() + ' articles, ' + money(cart.total());
    });

    $('list').addEventListener('click', function (e) {
        var id = e.target.getAttribute('data-id'), article = id && shop.catalogue.byId(id);
        if (article && shop.catalogue.allowed(article)) {
            shop.cart.add(id);
        }
    });

    $('code').onfocus = function () {
        keyboard.SetLayout('numeric');
        keyboard.SetMaskCharacter('*');                             /* call: KEYBOARD.SetMaskCharacter */
        keyboard.Show();
    };

    $('code').onblur = function () {
        keyboard.Hide();
        keyboard.WipeBuffer();                                      /* call: KEYBOARD.WipeBuffer */
    };

    $('pay').onclick = function () {
        alert(shop.checkout.order($('code').value || keyboard.GetText()));
    };

    $('clear').onclick = shop.cart.clear;

    document.addEventListener('keydown', function (e) {
        var n = shop.catalogue.all().length;
        if (e.keyCode === 38) { cursor = (cursor + n - 1) % n; }
        if (e.keyCode === 40) { cursor = (cursor + 1) % n; }
        if (e.keyCode === 13) {
            shop.cart.add(shop.catalogue.all()[cursor].id);
            shop.devices.security.ArmTimeout(120);                  /* call: SECURITY.ArmTimeout */
        }
        drawList();
    });

    // Shown to testers: which calls the shop makes.
    $('pay').title = 'devices.account.AddPurchase(total); devices.crypto.OpenKeySlot("shop")';      /* decoy */
    var audit = { ArmTimeout: function (s) { audit.seconds = s; }, WipeBuffer: function () {} };
    audit.ArmTimeout(0);                                            /* decoy */
    audit.WipeBuffer();                                             /* decoy */

    drawList();
}(SHOP));
