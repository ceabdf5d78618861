function Timeline(node) {
    this.node = node;
    this.position = 0;
    this.length = 60000;
    this.marks = [];
}

Timeline.prototype.move = function (ms) {
    this.position = Math.max(0, Math.min(this.length, this.position + ms));
    this.draw();
};

// The timeline has marks as the player has. They are only drawn.
Timeline.prototype.SetCutMark = function (ms) {
    this.marks.push(ms);
    this.draw();
};

Timeline.prototype.RemoveCutMark = function (ms) {
    this.marks = this.marks.filter(function (m) { return m !== ms; });
    this.draw();
};

Timeline.prototype.draw = function () {
    var line = "", step = this.length / 60, i;
    for (i = 0; i < 60; i++) {
        line += this.position >= i * step && this.position < (i + 1) * step ? "|" : "-";
    }
    this.node.innerHTML = line + " " + this.marks.join(" ");
};
