MAG.i18n = (function () {
    var texts = {
        en: { back: "Back", play: "Play", next: "Next", issue: "Issue {0}", empty: "No article" },
        de: { back: "Zurück", play: "Abspielen", next: "Weiter", issue: "Ausgabe {0}", empty: "Kein Artikel" },
        fr: { back: "Retour", play: "Lire", next: "Suivant", issue: "Numéro {0}", empty: "Aucun article" }
    };
    var language = "en";

    return {
        init: function () {
            var locale = MAG.plugin("locale");
            var wanted = locale.GetLanguage();
            if (texts[wanted]) {
                language = wanted;
            }
            locale.SetTextDirection("ltr");                     /* call: LOCALE.SetTextDirection */
        },
        use: function (code) {
            language = texts[code] ? code : language;
        },
        text: function (key) {
            var args = [texts[language][key] || key].concat([].slice.call(arguments, 1));
            return MAG.format.apply(null, args);
        },
        languages: function () {
            return Object.keys(texts);
        }
    };
}());
