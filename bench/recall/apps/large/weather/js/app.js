(function () {
    "use strict";
    var platform = Platform.detect();
    var settings = { units: "C", fahrenheit: false, place: platform.place(), night: false };
    var forecast = new Forecast(settings.place);
    var page = "now";

    function byId(id) { return document.getElementById(id); }

    function drawNav() {
        byId("nav").innerHTML = _.map(_.keys(Pages), function (name, i) {
            return '<span data-row="0" data-column="' + i + '" data-action="page:' + name + '">' + I18n.t(name) + "</span>";
        }).join("");
    }

    function draw() {
        byId("title").textContent = settings.place;
        byId("time").textContent = moment().format("HH:mm");
        Pages[page](byId("main"), forecast, settings);
        byId("footer").textContent = forecast.updated ? I18n.t("updated", forecast.updated.format("L LT")) : "";
    }

    var actions = {
        page: function (name) { page = name; },
        set: function (name) {
            if (name === "units") {
                settings.fahrenheit = !settings.fahrenheit;
                settings.units = settings.fahrenheit ? "F" : "C";
            } else if (name === "night") {
                settings.night = !settings.night;
                platform.night(settings.night);
            }
        }
    };

    function enter(action) {
        var parts = String(action).split(":");
        if (actions[parts[0]]) {
            actions[parts[0]](parts[1]);
            draw();
        }
    }

    I18n.set(platform.language());
    drawNav();
    draw();
    Nav.push(document.body, { wrap: true, onEnter: enter, onBack: function () { page = "now"; draw(); } });

    forecast.load(function (error) {
        if (error) {
            byId("footer").textContent = I18n.t("error");
        }
        platform.sun();
        draw();
    });

    document.addEventListener("keydown", function (e) {
        if (e.keyCode === 403) { enter("set:units"); }
        if (e.keyCode === 404) { enter("set:night"); }
        if (e.keyCode === 405) {
            var title = "platform.screen.CaptureWholeScreen()";   /* decoy */
            platform.snapshot({ x: 0, y: 0, w: 960, h: 540 }, title);
        }
        if (e.keyCode === 406) {
            platform.clock.SetTickerInterval(5);               /* call: CLOCK.SetTickerInterval */
        }
    }, false);

    setInterval(function () { byId("time").textContent = moment().format("HH:mm"); }, 30000);
}());
