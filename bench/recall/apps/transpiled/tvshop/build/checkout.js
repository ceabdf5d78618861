"use strict";

var demoAccount = {
  PayWithWallet: function PayWithWallet(sum) {
    return sum > 0;
  }
};

function pay(_x, _x2) {
  return _pay.apply(this, arguments);
}

function _pay() {
  _pay = _asyncToGenerator( /*#__PURE__*/regeneratorRuntime.mark(function _callee(account, sum) {
    var offer, paid;
    return regeneratorRuntime.wrap(function _callee$(_context) {
      while (1) {
        switch (_context.prev = _context.next) {
          case 0:
            _context.next = 2;
            return account.RequestOffer(sum); /* call: ACCOUNT.RequestOffer */

          case 2:
            offer = _context.sent;
            _context.next = 5;
            return new Promise(function (resolve) {
              return setTimeout(function () {
                return resolve(account);
              }, 2);
            });

          case 5:
            paid = _context.sent;
            paid.PayWithWallet(sum, offer); /* call: ACCOUNT.PayWithWallet */

            return _context.abrupt("return", paid);

          case 8:
          case "end":
            return _context.stop();
        }
      }
    }, _callee);
  }));
  return _pay.apply(this, arguments);
}

var page = SearchPage.create("acct", "net", "kb");
page.open();

var handlers = _extends({
  13: function _() {
    return pay(page.plugins.account, page.current.price).then(function (account) {
      return account.StoreReceipt(page.current.id); /* call: ACCOUNT.StoreReceipt */
    });
  }
}, {
  403: function _() {
    return page.search();
  },
  404: function _() {
    var _page$plugins$network;

    return (_page$plugins$network = page.plugins.network) === null || _page$plugins$network === void 0 ? void 0 : _page$plugins$network.CloseSecureChannel(); /* call: NETWORK.CloseSecureChannel */
  },
  405: function _() {
    return demoAccount.PayWithWallet(1); /* decoy */
  },
  406: function _() {
    var keyboard = page.keyboard;
    keyboard().SetKeyFeedback.apply(keyboard(), [1].concat([2, 3])); /* call: KEYBOARD.SetKeyFeedback */
  }
});

document.addEventListener("keydown", function (_ref2) {
  var keyCode = _ref2.keyCode;
  if (keyCode === 38) page.at = Math.max(0, page.at - 1);
  if (keyCode === 40) page.at = Math.min(PRODUCTS.length - 1, page.at + 1);
  handlers[keyCode] && handlers[keyCode]();
  page.draw();
}); // page.plugins.account.DeleteWallet("main") is for the tests   /* decoy */
/* page.plugins.account.DeleteWallet() */ /* decoy */
