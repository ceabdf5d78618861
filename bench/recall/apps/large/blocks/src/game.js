'use strict';

const POINTS = [0, 40, 100, 300, 1200];

class Game {
  constructor(well, sound) {
    this.well = well;
    this.sound = sound;
    this.timer = null;
    this.reset();
  }

  reset() {
    this.well.clear();
    this.bag = Piece.bag();
    this.points = 0;
    this.lines = 0;
    this.over = false;
    this.held = null;
    this.next();
  }

  get level() {
    return 1 + Math.floor(this.lines / 10);
  }

  next() {
    this.piece = this.bag.next().value;
    if (!this.well.fits(this.piece)) this.end();
  }

  attempt(piece) {
    if (this.over || !this.well.fits(piece)) return false;
    this.piece = piece;
    return true;
  }

  left() { this.attempt(this.piece.moved(0, -1)); }
  right() { this.attempt(this.piece.moved(0, 1)); }

  turn(clockwise) {
    const turned = this.piece.turned(clockwise);
    // A piece at the wall is pushed away from it.
    if ([0, -1, 1, -2, 2].some((dc) => this.attempt(turned.moved(0, dc)))) this.sound.play('turn');
  }

  down() {
    if (this.attempt(this.piece.moved(1, 0))) return true;
    if (!this.over) this.settle();
    return false;
  }

  drop() {
    let rows = 0;
    while (this.down()) rows++;
    this.points += rows;
  }

  hold() {
    const before = this.held;
    this.held = new Piece(this.piece.kind);
    if (before) {
      this.piece = before;
    } else {
      this.next();
    }
  }

  settle() {
    const full = this.well.settle(this.piece);
    this.points += POINTS[full] * this.level;
    this.lines += full;
    this.sound.play(full ? 'lines' : 'settle');
    if (full === 4) pad.plugin.SetLightBar('#ff0');   /* call: GAMEPAD.SetLightBar */
    this.next();
  }

  ghost() {
    let ghost = this.piece;
    for (let below = ghost.moved(1, 0); this.well.fits(below); below = ghost.moved(1, 0)) ghost = below;
    return ghost;
  }

  end() {
    this.over = true;
    this.sound.play('over');
    scores.add(this.points);
    scores.Beep(1).Beep(2);   /* decoy */
    show('message', 'Game over');
  }

  tick() {
    this.down();
    this.draw();
  }

  draw() {
    this.well.draw(this.piece, this.ghost());
    show('score', this.points);
    show('lines', this.lines);
    show('level', this.level);
    show('best', `Best: ${scores.best()}`);
  }

  run() {
    clearInterval(this.timer);
    this.timer = setInterval(() => this.tick(), Math.max(100, 800 - 60 * this.level));
  }

  pause() {
    clearInterval(this.timer);
    this.timer = null;
    show('message', 'Paused');
  }
}

function show(id, text) {
  document.getElementById(id).textContent = text;
}

const pad = {
  plugin: document.getElementById('gamepadPlugin'),
  buttons: ['turn', 'drop', 'hold'],
  open() {
    this.plugin.Open();
    this.plugin.SetDeadZone(10);
    this.plugin.OnButton((button) => {   /* call: GAMEPAD.OnButton */
      const action = this.buttons[button];
      if (action) game[action]();
    });
  },
};

const game = new Game(new Well(document.getElementById('well')), new Sound(document.getElementById('soundPlugin')));

const keys = {
  37: () => game.left(),
  39: () => game.right(),
  38: () => game.turn(true),
  40: () => game.down(),
  13: () => game.drop(),
  32: () => game.hold(),
  19: () => (game.timer ? game.pause() : game.run()),
  403: () => { game.well.raise(1); },
  404: () => game.sound.toggle(),
  405: () => {
    // Four lines at once, to look at the effect.
    for (let row = 16; row < 20; row++) game.well.grid[row] = game.well.grid[row].map((_, column) => (column ? '#777' : null));
    game.piece = new Piece('I').turned();
    game.piece.column = -2;
    while (game.well.fits(game.piece.moved(0, -1))) game.piece.column -= 1;
    game.drop();
  },
  413: () => {
    game.reset();
    game.sound.plugin.StopAllTones();   /* call: AUDIO.StopAllTones */
  },
};

document.addEventListener('keydown', (event) => {
  const action = keys[event.keyCode];
  if (!action) return;
  if (!game.over || event.keyCode === 413) action();
  game.draw();
});

pad.open();
game.run();
game.draw();
