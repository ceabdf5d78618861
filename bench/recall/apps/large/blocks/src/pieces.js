'use strict';

/** The seven pieces: rows of four, "x" is a stone. */
const SHAPES = {
  I: ['....', 'xxxx', '....', '....'],
  O: ['.xx.', '.xx.', '....', '....'],
  T: ['.x..', 'xxx.', '....', '....'],
  S: ['.xx.', 'xx..', '....', '....'],
  Z: ['xx..', '.xx.', '....', '....'],
  J: ['x...', 'xxx.', '....', '....'],
  L: ['..x.', 'xxx.', '....', '....'],
};

const COLOURS = { I: '#3cc', O: '#cc3', T: '#a3c', S: '#3c3', Z: '#c33', J: '#33c', L: '#c83' };

class Piece {
  constructor(kind) {
    this.kind = kind;
    this.row = 0;
    this.column = 3;
    this.cells = [];
    SHAPES[kind].forEach((line, row) => {
      Array.from(line).forEach((mark, column) => {
        if (mark === 'x') this.cells.push([row, column]);
      });
    });
  }

  get size() {
    return this.kind === 'I' ? 4 : this.kind === 'O' ? 0 : 3;
  }

  get colour() {
    return COLOURS[this.kind];
  }

  * stones(dr = 0, dc = 0) {
    for (const [row, column] of this.cells) yield [this.row + row + dr, this.column + column + dc];
  }

  turned(clockwise = true) {
    if (!this.size) return this;
    const copy = Object.assign(Object.create(Piece.prototype), this);
    const last = this.size - 1;
    copy.cells = this.cells.map(([row, column]) => (clockwise ? [column, last - row] : [last - column, row]));
    return copy;
  }

  moved(dr, dc) {
    const copy = Object.assign(Object.create(Piece.prototype), this);
    copy.row += dr;
    copy.column += dc;
    return copy;
  }

  /** Every seven pieces have one of each kind. */
  static * bag(random = Math.random) {
    for (;;) {
      const kinds = Object.keys(SHAPES);
      while (kinds.length) {
        yield new Piece(kinds.splice(Math.floor(random() * kinds.length), 1)[0]);
      }
    }
  }
}
