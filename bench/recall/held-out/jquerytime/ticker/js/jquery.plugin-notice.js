/* $(object).tv('Method', arg...): calls a method of each plug-in of the set, chainable.
 * $(object).tvGet('Method'): the same for the first one, gives the result. */
(function ($) {
  $.fn.tv = function (name) {
    var args = $.makeArray(arguments).slice(1);
    return this.each(function () {
      if (name in this || this[name]) {
        this[name].apply(this, args);                   /* also: NOTIFICATION.SetIcon, NOTIFICATION.SetBadgeCount */
      }
    });
  };
  $.fn.tvGet = function (name) {
    var plugin = this.get(0);
    return plugin ? plugin[name]() : null;              /* also: TELETEXT.HasFastext */
  };
  $.notice = function (text, options) {
    var o = $.extend({ seconds: 5, sticky: false }, options), plugin = $('#pluginNotification')[0];
    plugin.SetTimeout(o.seconds);
    plugin.ShowMessage(text);
    if (o.sticky) {
      plugin.PinMessage(text);                          /* call: NOTIFICATION.PinMessage */
    }
  };
})(jQuery);
