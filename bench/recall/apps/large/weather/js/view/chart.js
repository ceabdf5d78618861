// A line chart on a canvas: the temperatures of a day.
function Chart(canvas) {
    this.context = canvas.getContext("2d");
    this.width = canvas.width;
    this.height = canvas.height;
}

Chart.prototype.scale = function (values) {
    var low = Math.floor(_.min(values)) - 1, high = Math.ceil(_.max(values)) + 1;
    var self = this;
    return function (value, i) {
        return { x: 10 + i * (self.width - 20) / (values.length - 1), y: self.height - 10 - (value - low) / (high - low) * (self.height - 20) };
    };
};

Chart.prototype.draw = function (values) {
    var context = this.context;
    context.clearRect(0, 0, this.width, this.height);
    if (!values.length) {
        return;
    }
    var points = _.map(values, this.scale(values));
    context.strokeStyle = "#fff";
    context.lineWidth = 3;
    context.beginPath();
    context.moveTo(points[0].x, points[0].y);
    _.each(_.rest(points), function (point) { context.lineTo(point.x, point.y); });
    context.stroke();
    _.each(points, function (point, i) {
        if (i % 6 === 0) {
            context.fillText(Math.round(values[i]) + "°", point.x - 8, point.y - 8);
        }
    });
};
