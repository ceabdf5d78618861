function Forecast(place) {
    this.place = place;
    this.days = [];
    this.hours = [];
    this.updated = null;
}

Forecast.ICONS = { 0: "sun", 1: "few", 2: "cloud", 3: "rain", 4: "snow", 5: "storm" };

Forecast.toFahrenheit = function (celsius) {
    return Math.round(celsius * 9 / 5 + 32);
};

Forecast.prototype.load = function (done) {
    var self = this;
    var xhr = new XMLHttpRequest();
    xhr.open("GET", "https://weather.example/v2/" + encodeURIComponent(this.place) + "?days=7", true);
    xhr.timeout = 5000;
    xhr.onload = function () {
        var failed = null;
        try {
            self.parse(JSON.parse(xhr.responseText));
        } catch (error) {
            failed = error;
        }
        done(failed, self);
    };
    xhr.onerror = xhr.ontimeout = function () {
        self.parse(Forecast.sample());
        done(new Error("offline"), self);
    };
    xhr.send();
};

Forecast.prototype.parse = function (data) {
    this.updated = moment(data.updated);
    this.days = _.map(data.days, function (day, i) {
        return { date: moment(data.updated).add(i, "days"), low: day[0], high: day[1], icon: Forecast.ICONS[day[2]] || "few" };
    });
    this.hours = _.map(_.range(24), function (hour) {
        var first = data.days[0];
        return first[0] + (first[1] - first[0]) * Math.sin(Math.PI * hour / 24);
    });
};

Forecast.prototype.warmest = function () {
    return _.max(this.days, function (day) { return day.high; });
};

Forecast.sample = function () {
    return { updated: "2021-06-01T06:00:00", days: [[12, 21, 0], [13, 24, 1], [15, 26, 0], [14, 19, 3], [11, 17, 3], [10, 18, 2], [12, 22, 1]] };
};
