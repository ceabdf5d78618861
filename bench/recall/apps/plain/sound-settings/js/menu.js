function Menu(node) {
    this.node = node;
    this.selected = 0;
}

Menu.prototype.draw = function () {
    var html = "<table>";
    for (var i = 0; i < settings.length; i++) {
        var s = settings[i];
        html += '<tr class="' + (i == this.selected ? "on" : "") + '"><td>' + s.label + "</td><td>" +
            s.values[s.index] + "</td></tr>";
    }
    this.node.innerHTML = html + "</table>";
};

Menu.prototype.move = function (by) {
    this.selected = (this.selected + by + settings.length) % settings.length;
    this.draw();
};

Menu.prototype.change = function (by) {
    var s = settings[this.selected];
    s.index = (s.index + by + s.values.length) % s.values.length;
    applySetting(s);
    this.draw();
};
