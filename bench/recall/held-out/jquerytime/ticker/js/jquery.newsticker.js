/*!
 * jQuery newsTicker plugin 0.4
 * Rotates the items of a list; calls back for the one that is shown.
 */
(function ($) {
  var methods = {
    init: function (options) {
      return this.each(function () {
        var settings = $.extend({}, $.fn.newsTicker.defaults, options);
        var $list = $(this), data = { settings: settings, index: -1, timer: null };
        $list.data('newsTicker', data);
        methods.next.call($list);
      });
    },
    next: function () {
      return this.each(function () {
        var $list = $(this), data = $list.data('newsTicker'), $items = $list.children('li');
        if (!data || !$items.length) { return; }
        data.index = (data.index + 1) % $items.length;
        var $current = $items.removeClass('current').eq(data.index).addClass('current');
        data.settings.onShow.call($current[0], data.index, $current);
        clearTimeout(data.timer);
        data.timer = setTimeout(function () { methods.next.call($list); }, data.settings.delay);
      });
    },
    add: function (items) {
      var $list = this;
      $.each(items, function (i, item) {
        $('<li/>').attr({ 'data-category': item.category, 'data-page': item.page })
          .append($('<a/>').text(item.title)).appendTo($list);
      });
      return this;
    },
    stop: function () {
      return this.each(function () { clearTimeout(($(this).data('newsTicker') || {}).timer); });
    }
  };

  $.fn.newsTicker = function (method) {
    if (methods[method]) {
      return methods[method].apply(this, Array.prototype.slice.call(arguments, 1));
    }
    return methods.init.apply(this, arguments);
  };
  $.fn.newsTicker.defaults = { delay: 120, onShow: $.noop };
})(jQuery);
