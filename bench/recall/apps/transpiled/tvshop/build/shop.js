"use strict";

var PRODUCTS = [{
  id: 1,
  name: "Kettle",
  price: 29
}, {
  id: 2,
  name: "Lamp",
  price: 45
}, {
  id: 3,
  name: "Blanket",
  price: 38
}];

var Page = /*#__PURE__*/function () {
  function Page(plugins) {
    var _this = this;

    _classCallCheck(this, Page);

    this.plugins = plugins;
    this.at = 0;

    this.keyboard = function () {
      return _this.plugins.keyboard;
    };
  }

  _createClass(Page, [{
    key: "open",
    value: function open() {
      var _this$plugins = this.plugins,
          keyboard = _this$plugins.keyboard,
          rest = _objectWithoutProperties(_this$plugins, ["keyboard"]);

      keyboard.SetInputHint("Search the shop"); /* call: KEYBOARD.SetInputHint */

      rest.network.OpenSecureChannel(443); /* call: NETWORK.OpenSecureChannel */

      this.draw();
    }
  }, {
    key: "draw",
    value: function draw() {
      var _this2 = this;

      document.getElementById("shop").innerHTML = PRODUCTS.map(function (_ref, i) {
        var name = _ref.name,
            price = _ref.price;
        return "<p".concat(i === _this2.at ? " class='on'" : "", ">").concat(name, " ").concat(price, "</p>");
      }).join("");
    }
  }, {
    key: "current",
    get: function get() {
      return PRODUCTS[this.at];
    }
  }], [{
    key: "create",
    value: function create() {
      for (var _len = arguments.length, ids = new Array(_len), _key = 0; _key < _len; _key++) {
        ids[_key] = arguments[_key];
      }

      var _ids$map = ids.map(function (id) {
        return document.getElementById(id);
      }),
          _ids$map2 = _slicedToArray(_ids$map, 3),
          account = _ids$map2[0],
          network = _ids$map2[1],
          keyboard = _ids$map2[2];

      account.SelectWallet("main"); /* call: ACCOUNT.SelectWallet */

      return new this({
        account: account,
        network: network,
        keyboard: keyboard
      });
    }
  }]);

  return Page;
}();

var SearchPage = /*#__PURE__*/function (_Page) {
  _inherits(SearchPage, _Page);

  function SearchPage(plugins) {
    var _this3;

    _classCallCheck(this, SearchPage);

    _this3 = _possibleConstructorReturn(this, _getPrototypeOf(SearchPage).call(this, plugins));
    _this3.words = [];
    return _this3;
  }

  _createClass(SearchPage, [{
    key: "search",
    value: function search() {
      var text = this.keyboard().GetText();
      this.keyboard().LearnWord(text); /* call: KEYBOARD.LearnWord */

      this.words.push(text);
      var _iteratorNormalCompletion = true;

      for (var _iterator = [this.plugins.network][Symbol.iterator](), _step; !(_iteratorNormalCompletion = (_step = _iterator.next()).done); _iteratorNormalCompletion = true) {
        var network = _step.value;
        network.Prefetch("https://shop.example/" + text); /* call: NETWORK.Prefetch */
      }
    }
  }]);

  return SearchPage;
}(Page);
