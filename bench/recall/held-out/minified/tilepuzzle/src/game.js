import { Board, SHAPES, rotate } from './board.js';
import { Pad, rumble, withScreen } from './devices.js';

const board = new Board();
const device = new Pad(0).open();
const context = document.getElementById('board').getContext('2d');
let piece, score = 0, over = false, best = +localStorage.getItem('best') || 0;

const effects = {
  land: (r) => r.PlayRumble(30),                    /* call: HAPTIC.PlayRumble */
  line: (r, n) => r.PlaySequence(Array(n).fill(60)),      /* call: HAPTIC.PlaySequence */
  over: (r) => { r.Stop(); r.FadeIntensity(0, 500); },    /* call: HAPTIC.FadeIntensity */
};

withScreen((screen) => {
  screen.SetScreenSaver(false);
  screen.SetRefreshRate(60);                        /* call: SCREEN.SetRefreshRate */
  screen.EnableGameMode(true);                      /* call: SCREEN.EnableGameMode */
});

function spawn() {
  const names = Object.keys(SHAPES);
  piece = { shape: SHAPES[names[score % names.length]], x: 3, y: 0 };
  if (!board.fits(piece.shape, piece.x, piece.y)) finish();
}

function finish() {
  over = true;
  effects.over(rumble);
  if (score > best) {
    best = score;
    localStorage.setItem('best', String(best));
  }
  withScreen(({ SaveHighScoreShot: shot }) => shot && shot('board'));     /* call: SCREEN.SaveHighScoreShot */
}

function move(dx, dy, shape = piece.shape) {
  if (!board.fits(shape, piece.x + dx, piece.y + dy)) return false;
  Object.assign(piece, { shape, x: piece.x + dx, y: piece.y + dy });
  return true;
}

function drop() {
  while (move(0, 1));
  board.put(piece.shape, piece.x, piece.y);
  board.PlayRumble(2);
  effects.land(rumble);
  const lines = board.clear();
  score += 10 + 100 * lines;
  effects.line(rumble, lines);
  document.getElementById('score').textContent = score;
  spawn();
}

function draw() {
  context.fillStyle = '#000';
  context.fillRect(0, 0, 200, 400);
  context.fillStyle = '#6cf';
  board.rows.forEach((row, y) => row.forEach((c, x) => { if (c) context.fillRect(x * 20, y * 20, 19, 19); }));
  piece.shape.forEach((row, y) => [...row].forEach((c, x) => {
    if (c === '1') context.fillRect((piece.x + x) * 20, (piece.y + y) * 20, 19, 19);
  }));
}

function tick() {
  if (over) return;
  const { left, right, turn } = device.poll();
  if (left) move(-1, 0);
  if (right) move(1, 0);
  if (turn) move(0, 0, rotate(piece.shape));
  if (!move(0, 1)) drop();
  draw();
}

addEventListener('keydown', ({ keyCode }) => {
  if (keyCode === 37) move(-1, 0);
  else if (keyCode === 39) move(1, 0);
  else if (keyCode === 38) move(0, 0, rotate(piece.shape));
  else if (keyCode === 13 && !over) drop();
  else if (keyCode === 461 && !over) finish();
});
spawn();
tick();
setInterval(tick, 100);
