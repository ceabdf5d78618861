(function ($) {
    // $(...).slider({...}): a bar that is moved with the keys.
    $.fn.bar = function (options) {
        var settings = $.extend({ min: 0, max: 100, value: 50, SetValue: $.noop }, options);
        return this.each(function () {
            var item = $(this);
            var control = {
                value: settings.value,
                SetValue: function (value) {
                    control.value = value;
                    item.attr("data-value", value);
                    settings.SetValue.call(item[0], value);     /* decoy */
                },
                Step: function (by) {
                    control.SetValue(Math.min(settings.max, control.value + by));   /* decoy */
                }
            };
            item.data("bar", control);
            item.on("click", function () { control.Step(5); });     /* decoy */
        });
    };

    // What can be chosen in the menu itself. Nothing of this goes to the set.
    $.menu = {
        SetTheme: function (name) { $("body").attr("class", "theme-" + name); },
        SetLegend: function (text) { $("#tabs").attr("title", text); },
        SetSharpness: function () { return "fixed"; }
    };
}(jQuery));
