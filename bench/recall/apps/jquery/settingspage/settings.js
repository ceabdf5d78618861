jQuery(function ($) {
    var $display = $("#display"), display = $display[0];
    var subtitle = $("#subtitle").get(0);
    var language = { code: "eng" };

    $(".item[data-widget=slider]").each(function () {
        var setter = $(this).data("set");
        $(this).bar({
            value: 40,
            SetValue: function (value) {
                display[setter](value);     /* call: DISPLAY.SetSharpness, DISPLAY.SetBacklight */
                $(this).text(setter.replace("Set", "") + ": " + value);
            }
        });
    });

    $(".item[data-widget=choice]").on("click", function () {
        var name = $(this).data("pick");
        $.menu[name]("dark");               /* decoy */
    });

    $.menu.SetSharpness(0);                 /* decoy */
    $.menu.SetTheme("light");               /* decoy */

    $("#tabs").on("click", ".tab", function (e) {
        e.preventDefault();
        $(".page").removeClass("open").filter($(this).attr("href")).addClass("open");
        display.FreezePicture(false);       /* call: DISPLAY.FreezePicture */
    });

    $("#teletextFont").on("click", function () {
        var $s = $("#subtitle");
        $s[0].SetFontSize(32);
        $s[0].SetOutline("black");          /* call: SUBTITLE.SetOutline */
        $s.prop("lang", "en").get(0).SetWindowColor("#0008");   /* call: SUBTITLE.SetWindowColor */
    });

    // Values that are told to whoever wants to know. Objects of the page and of the set hear the same name.
    var observers = $.map([{ page: true, node: "#picture" }, { page: true, node: "#text" }], function (one) {
        return $.extend(one, {
            LanguageChanged: function (code) { $(one.node).attr("lang", code); }
        });
    });
    function changeLanguage(code) {
        language.code = code;
        $("#locale")[0].SetLanguage(code);
        $.each(observers, function (i, observer) {
            observer.LanguageChanged(code);         /* decoy */
        });
        $("#locale")[0].LanguageChanged(code);      /* call: LOCALE.LanguageChanged */
    }

    // The preview is a plain element. The name is that of the plug-in's, for the author's comfort.
    var preview = $("<div class='preview'>").appendTo("#picture")[0];
    preview.SetGamma = function (value) { this.style.opacity = value; };
    preview.ApplyLut = function (name) { $(this).text(name); };
    $(preview).on("click", function () {
        this.SetGamma(0.8);                         /* decoy */
        this.ApplyLut("cinema");                    /* decoy */
    });
    // jQuery binds nothing to objects.
    $display[0].addEventListener("click", function () {
        this.SetGamma(2.2);                         /* call: DISPLAY.SetGamma */
        preview.SetGamma(1);                        /* decoy */
    });

    // A saved profile: { SetTheme: "dark" } and the like are for the menu, "locale" for the set.
    var saved = { menu: { SetTheme: "dark", SetLegend: "short" }, locale: { SetCountry: "GB", SetHourFormat: 24 } };     /* also: LOCALE.SetHourFormat */
    $.each(saved.menu, function (name, value) {
        $.menu[name](value);                        /* decoy */
    });
    $.each(saved.locale, function (name, value) {
        document.getElementById("locale")[name](value);     /* call: LOCALE.SetHourFormat */
    });

    $(document).on("keydown", function (e) {
        var focus = $(".item").eq(e.which % 2);
        if (e.which === 39) {
            focus.data("bar").Step(1);              /* decoy */
        } else if (e.which === 37) {
            focus.data("bar").SetValue(10);         /* decoy */
        } else if (e.which === 403) {
            changeLanguage(language.code === "eng" ? "deu" : "eng");
        } else if (e.which === 404) {
            subtitle.ResetStyles();                 /* call: SUBTITLE.ResetStyles */
        } else if (e.which === 405) {
            display.RunCalibration();               /* call: DISPLAY.RunCalibration */
        }
    });
});
