var SIZE = 9;

function Grid(text) {
    this.cells = text.split("").map(function (c) { return c === "." ? 0 : +c; });
    this.given = this.cells.map(Boolean);
}

Grid.prototype.at = function (row, column) {
    return this.cells[row * SIZE + column];
};

Grid.prototype.candidates = function (index) {
    var row = Math.floor(index / SIZE), column = index % SIZE, used = {}, result = [], i, n;
    for (i = 0; i < SIZE; i++) {
        used[this.at(row, i)] = true;
        used[this.at(i, column)] = true;
        used[this.at(Math.floor(row / 3) * 3 + Math.floor(i / 3), Math.floor(column / 3) * 3 + i % 3)] = true;
    }
    for (n = 1; n <= SIZE; n++) {
        if (!used[n]) {
            result.push(n);
        }
    }
    return result;
};

Grid.prototype.solve = function () {
    var best = -1, choices = null, i, c;
    for (i = 0; i < this.cells.length; i++) {
        if (!this.cells[i]) {
            c = this.candidates(i);
            if (!choices || c.length < choices.length) {
                best = i;
                choices = c;
            }
        }
    }
    if (best < 0) {
        return true;
    }
    for (i = 0; i < choices.length; i++) {
        this.cells[best] = choices[i];
        if (this.solve()) {
            return true;
        }
    }
    this.cells[best] = 0;
    return false;
};
