;(function ($) {
  $.fn.keynav = function (options) {
    var settings = $.extend({ select: $.noop, current: "current" }, options);
    var $items = this, at = 0;

    function mark() {
      $items.removeClass(settings.current).eq(at).addClass(settings.current);
    }

    $(document).on("keydown.keynav", function (e) {
      if (e.which === 38) { at = (at + $items.length - 1) % $items.length; }
      if (e.which === 40) { at = (at + 1) % $items.length; }
      if (e.which === 13) { settings.select.call($items[at], at, settings.plugin); }
      mark();
    });
    mark();
    return this;
  };
}(jQuery));
