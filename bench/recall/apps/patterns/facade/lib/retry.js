/**
 * Calls that fail are tried again. Devices answer 0 or less when they are not ready.
 */
var Retry = {
    attempts: 3,

    call: function (f, context, args) {
        var result, i;
        for (i = 0; i < Retry.attempts; i++) {
            try {
                result = f.apply(context, args);    /* call: HAPTIC.PulseOnce, NETWORK.LocateByAddress, SECURITY.AuthorizePayment, LOCALE.GetRegionCode, SECURITY.LogBooking, NETWORK.SetQosHint */
            } catch (e) {
                result = -1;
            }
            if (result === undefined || result > 0) {
                return result;
            }
        }
        return result;
    },

    wrap: function (object, names) {
        var wrapped = {};
        names.forEach(function (name) {
            wrapped[name] = function () {
                return Retry.call(object[name], object, arguments);   /* also: LOCALE.GetRegionCode */
            };
        });
        return wrapped;
    }
};
