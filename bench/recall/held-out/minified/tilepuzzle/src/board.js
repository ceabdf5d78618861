export const WIDTH = 10, HEIGHT = 20;
export const SHAPES = { I: ['1111'], O: ['11', '11'], T: ['111', '010'], L: ['100', '111'], S: ['011', '110'] };

export function rotate(shape) {
  return shape[0].split('').map((_, x) => shape.map((row) => row[x]).reverse().join(''));
}

export class Board {
  constructor() { this.rows = Array.from({ length: HEIGHT }, () => Array(WIDTH).fill(0)); }
  fits(shape, px, py) {
    return shape.every((row, y) => [...row].every((c, x) => c === '0' ||
      (px + x >= 0 && px + x < WIDTH && py + y < HEIGHT && !this.rows[py + y][px + x])));
  }
  put(shape, px, py) {
    shape.forEach((row, y) => [...row].forEach((c, x) => { if (c === '1') this.rows[py + y][px + x] = 1; }));
  }
  clear() {
    const left = this.rows.filter((row) => row.some((c) => !c)), n = HEIGHT - left.length;
    this.rows = Array.from({ length: n }, () => Array(WIDTH).fill(0)).concat(left);
    return n;
  }
  /* The board shakes too, without the plug-in. */
  PlayRumble(n) { this.shake = n; }
}
