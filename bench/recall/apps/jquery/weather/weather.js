$(function () {

    var $days = $('#days'),
        locale = $('#locale')[0],
        network = $('#network').get(0),
        $notify = $('#notify'),
        units = 'c';

    locale.SetLanguage('en');
    locale.SetUnitSystem('metric');                             /* call: LOCALE.SetUnitSystem */
    $('#header .city').text(locale.GetTimeZoneCity());          /* call: LOCALE.GetTimeZoneCity */

    $days.forecast({
        sensor: $('#sensor')[0],
        onWarning: function (day) {
            $notify[0].ShowMessage('Weather warning: ' + day.warning);
            $notify[0].SetSeverity('high');                     /* call: NOTIFICATION.SetSeverity */
        }
    });

    function load() {
        network.KeepAlive(true);                                /* call: NETWORK.KeepAlive */
        return $.getJSON('forecast.json')
            .done(function (reply) {
                $('.city').text(reply.city);
                $days.forecast('update', reply.days);
                $('#network')[0].ReportTraffic(JSON.stringify(reply).length);   /* call: NETWORK.ReportTraffic */
            })
            .fail(function () {
                $('.city').text('-');
            })
            .always(function () {
                network.KeepAlive(false);                       /* also: NETWORK.KeepAlive */
            });
    }

    $('#refresh').click(function () {
        load();
        return false;
    });

    $('#units').bind('click', function () {
        units = units === 'c' ? 'f' : 'c';
        $days.forecast('setUnits', units);
        $(this).toggleClass(units);
        $('object.plugin').filter('#locale').each(function () {
            this.SetTemperatureUnit(units);                     /* call: LOCALE.SetTemperatureUnit */
        });
    });

    $('#warn').on('click', { limit: 3 }, function (e) {
        $notify.each(function (i, plugin) {
            plugin.SetQueueLimit(e.data.limit);                 /* call: NOTIFICATION.SetQueueLimit */
        });
        var own = $.extend({}, { SetSeverity: function (s) { this.severity = s; } });
        own.SetSeverity('low');                                 /* decoy */
    });

    $(document).keydown(function (e) {
        if (e.which === 403) {
            $('#refresh').trigger('click');
        } else if (e.which === 404) {
            $.map($('object.plugin'), function (o) { return o.id; });
            $('#sensor').get(0).ResetCalibration();             /* call: LIGHTSENSOR.ResetCalibration */
        }
    });

    // The station's own page can turn the sensor on, by a word in a message.
    $(window).on('message', function (e) {
        var word = e.originalEvent.data;
        if (typeof word === 'string' && /^[A-Z]\w+$/.test(word)) {
            $('#sensor')[0][word]();                            /* undecidable: LIGHTSENSOR */
        }
    });

    $('.city').html('<b title="locale.SetUnitSystem()">?</b>');   /* decoy */
    load();
    setInterval(load, 15 * 60 * 1000);
});
