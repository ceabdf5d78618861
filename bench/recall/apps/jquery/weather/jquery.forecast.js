/*!
 * jQuery forecast list
 */
;(function ($) {

    var defaults = {
        units: 'c',
        data: [],
        sensor: null,
        onWarning: $.noop
    };

    function Forecast(element, options) {
        this.$element = $(element);
        this.options = $.extend({}, defaults, options);
        this.render();
    }

    $.extend(Forecast.prototype, {

        degrees: function (c) {
            return this.options.units === 'f' ? Math.round(c * 9 / 5 + 32) : c;
        },

        render: function () {
            var self = this;
            this.$element.empty();
            $.each(this.options.data, function (i, day) {
                $('<li/>')
                    .addClass(day.icon)
                    .toggleClass('today', i === 0)
                    .text(day.day + ' ' + self.degrees(day.min) + '…' + self.degrees(day.max))
                    .appendTo(self.$element);
                if (day.warning) {
                    self.options.onWarning.call(self, day);
                }
            });
            if (this.options.sensor) {
                this.options.sensor.SetCalibrationProfile('indoor');   /* call: LIGHTSENSOR.SetCalibrationProfile */
            }
        },

        setUnits: function (units) {
            this.options.units = units;
            this.render();
        },

        update: function (data) {
            this.options.data = data;
            this.render();
        }
    });

    $.fn.forecast = function (option) {
        var args = Array.prototype.slice.call(arguments, 1);
        return this.each(function () {
            var $this = $(this), data = $this.data('forecast');
            if (!data) {
                $this.data('forecast', (data = new Forecast(this, typeof option === 'object' && option)));
            }
            if (typeof option === 'string') {
                data[option].apply(data, args);
            }
        });
    };

})(jQuery);
