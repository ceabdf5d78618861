'use strict';

class Well {
  constructor(canvas, rows = 20, columns = 10) {
    this.context = canvas.getContext('2d');
    this.stone = canvas.width / columns;
    this.rows = rows;
    this.columns = columns;
    this.clear();
  }

  clear() {
    this.grid = Array.from({ length: this.rows }, () => new Array(this.columns).fill(null));
  }

  fits(piece) {
    for (const [row, column] of piece.stones()) {
      if (row < 0 || row >= this.rows || column < 0 || column >= this.columns || this.grid[row][column]) return false;
    }
    return true;
  }

  settle(piece) {
    for (const [row, column] of piece.stones()) this.grid[row][column] = piece.colour;
    const kept = this.grid.filter((line) => line.some((cell) => !cell));
    const full = this.rows - kept.length;
    while (kept.length < this.rows) kept.unshift(new Array(this.columns).fill(null));
    this.grid = kept;
    return full;
  }

  /** Adds lines of rubbish at the bottom. */
  raise(count) {
    for (let i = 0; i < count; i++) {
      const gap = Math.floor(Math.random() * this.columns);
      this.grid.shift();
      this.grid.push(Array.from({ length: this.columns }, (_, column) => (column === gap ? null : '#777')));
    }
  }

  height() {
    const top = this.grid.findIndex((line) => line.some(Boolean));
    return top < 0 ? 0 : this.rows - top;
  }

  draw(piece, ghost) {
    const { context, stone } = this;
    context.clearRect(0, 0, stone * this.columns, stone * this.rows);
    this.grid.forEach((line, row) => line.forEach((colour, column) => {
      if (colour) this.drawStone(row, column, colour);
    }));
    context.globalAlpha = 0.3;
    for (const [row, column] of ghost.stones()) this.drawStone(row, column, piece.colour);
    context.globalAlpha = 1;
    for (const [row, column] of piece.stones()) this.drawStone(row, column, piece.colour);
  }

  drawStone(row, column, colour) {
    const { context, stone } = this;
    context.fillStyle = colour;
    context.fillRect(column * stone + 1, row * stone + 1, stone - 2, stone - 2);
  }
}
