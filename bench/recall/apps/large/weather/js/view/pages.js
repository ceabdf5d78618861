var Pages = {
    now: function (root, forecast, settings) {
        var today = forecast.days[0] || { low: "-", high: "-", icon: "few" };
        var unit = settings.fahrenheit ? Forecast.toFahrenheit : _.identity;
        root.innerHTML = "<h2>" + I18n.t(today.icon) + " " + unit(today.low) + "° / " + unit(today.high) + "°</h2>" +
            '<canvas width="600" height="160"></canvas>';
        new Chart(root.querySelector("canvas")).draw(forecast.hours);
    },
    week: function (root, forecast, settings) {
        var unit = settings.fahrenheit ? Forecast.toFahrenheit : _.identity;
        root.innerHTML = _.map(forecast.days, function (day) {
            return '<div class="day">' + day.date.format("ddd D") + "<br>" + I18n.t(day.icon) + "<br>" + unit(day.low) + "° " + unit(day.high) + "°</div>";
        }).join("");
    },
    map: function (root) {
        root.innerHTML = '<div id="map">' + _.map(_.range(4), function (tile) {
            return '<img alt="" width="120" data-tile="' + tile + '">';
        }).join("") + "</div>";
    },
    settings: function (root, forecast, settings) {
        root.innerHTML = _.map(["units", "place", "night"], function (name, i) {
            return '<p data-row="' + (i + 1) + '" data-column="0" data-action="set:' + name + '">' + I18n.t(name) + ": " + settings[name] + "</p>";
        }).join("");
    }
};
