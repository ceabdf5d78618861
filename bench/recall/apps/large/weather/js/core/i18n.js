var I18n = (function () {
    var messages = {
        en: { now: "Now", week: "Week", map: "Radar", settings: "Settings", units: "Units", place: "Place", wind: "Wind",
              rain: "Rain", sun: "Sun", updated: "Updated {0}", error: "The forecast cannot be loaded." },
        de: { now: "Jetzt", week: "Woche", map: "Radar", settings: "Einstellungen", units: "Einheiten", place: "Ort", wind: "Wind",
              rain: "Regen", sun: "Sonne", updated: "Stand {0}", error: "Die Vorhersage kann nicht geladen werden." }
    };
    var current = "en";

    function format(text, values) {
        return text.replace(/\{(\d+)\}/g, function (all, n) { return values[n]; });
    }

    return {
        set: function (language) {
            if (messages.hasOwnProperty(language)) {
                current = language;
            }
        },
        get: function () { return current; },
        t: function (key) {
            return format(messages[current][key] || key, [].slice.call(arguments, 1));
        }
    };
}());
