// A small widget factory: $.tvWidget('name', {methods}) makes $(...).name(options) and $(...).name('method', ...).
(function ($) {
  $.tvWidget = function (name, base, prototype) {
    if (!prototype) {
      prototype = base;
      base = $.TVWidget;
    }
    var Class = function () {};
    Class.prototype = new base();
    Class.prototype.options = $.extend({}, base.prototype.options, prototype.options);
    $.each(prototype, function (key, value) {
      if (typeof value !== 'function') {
        if (key !== 'options') Class.prototype[key] = value;
        return;
      }
      Class.prototype[key] = function () {
        var before = this._super, result;
        this._super = base.prototype[key];
        result = value.apply(this, arguments);
        this._super = before;
        return result;
      };
    });
    $.fn[name] = function (options) {
      var args = $.makeArray(arguments).slice(1);
      this.each(function () {
        var widget = $.data(this, name);
        if (typeof options === 'string') {
          widget[options].apply(widget, args);
        } else if (!widget) {
          widget = new Class();
          widget.element = $(this);
          widget.options = $.extend({}, widget.options, options);
          $.data(this, name, widget);
          widget._create();
        }
      });
      return this;
    };
    $.fn[name].Class = Class;
  };

  $.TVWidget = function () {};
  $.TVWidget.prototype = {
    options: {},
    _create: function () {},
    _plugin: function (kind) {
      var key = 'plugin-' + kind;
      if (!this.element.data(key)) {
        this.element.data(key, $('<object>').attr('classid', 'clsid:MORVANE-NAVERTIX-' + kind).appendTo('body')[0]);
      }
      return this.element.data(key);
    }
  };
})(jQuery);
