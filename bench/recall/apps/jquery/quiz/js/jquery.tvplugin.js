/*! jquery.tvplugin: calls a method of the plug-ins in a set: $(".sound").tv("SetMute", 0) */
;(function ($) {
  var defaults = { quiet: true };

  $.fn.tv = function (method) {
    var args = $.makeArray(arguments).slice(1);
    return this.each(function () {
      var element = this;
      if (!$.isFunction(element[method])) {
        if (!$.fn.tv.defaults.quiet) { $.error("No method " + method); }
        return;
      }
      element[method].apply(element, args);                    /* call: AUDIO.PlayJingle, AUDIO.StopJingle, REMOTE.Beep */
    });
  };
  $.fn.tv.defaults = defaults;

  $.tv = {
    find: function (id) { return $("#" + id).get(0); },
    all: function () { return $("object[classid*='MORVANE']"); }
  };
}(jQuery));
