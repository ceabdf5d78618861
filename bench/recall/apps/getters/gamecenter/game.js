'use strict';
const board = document.getElementById('board').getContext('2d');
const pads = counted(device.gamepad);
const rumbler = new Holder(null);
const watched = new Proxy({ paused: false, hp: device.haptic }, {
  set(target, name, value) {
    target[name] = value;
    if (name === 'paused') {
      draw();
    }
    return true;
  }
});

const game = {
  score: 0,
  lives: 2,
  snake: [[10, 10], [10, 11], [10, 12]],
  get over() { return this.lives === 0; },
  get player() {
    return { pad: device.gamepad, name: 'P1', SetLedColor() {} };
  }
};

function draw() {
  board.fillStyle = watched.paused ? '#333' : '#000';
  board.fillRect(0, 0, 640, 480);
  board.fillStyle = '#0f0';
  for (const [x, y] of game.snake) {
    board.fillRect(x * 16, y * 16, 15, 15);
  }
  document.getElementById('score').textContent = String(game.score);
}

function start() {
  device.gamepad.Open();
  device.gamepad.ClaimExclusive(true);                         /* call: GAMEPAD.ClaimExclusive */
  device.motion.Start();
  device.motion.SetFusionMode('game');                         /* call: MOTION.SetFusionMode */
  pads.SetVibrationMotors(2);                                  /* call: GAMEPAD.SetVibrationMotors */
  game.player.pad.SetLedColor('blue');                           /* call: GAMEPAD.SetLedColor */
  game.player.SetLedColor('blue');                             /* decoy */
  rumbler.value = device.haptic;
  Settings.shared.rumble = 0.8;
  Settings.shared.zone = 10;
  draw();
}

function hit() {
  game.lives = Math.max(0, game.lives - 1);
  rumbler.value.PlayPattern([40, 20, 40]);                     /* call: HAPTIC.PlayPattern */
  if (game.over) {
    watched.hp.StopAllMotors();                                /* call: HAPTIC.StopAllMotors */
    game.lives = 3;
  }
}

function turn(dx, dy) {
  const [x, y] = game.snake[0];
  game.snake.unshift([(x + dx + 40) % 40, (y + dy + 30) % 30]);
  game.snake.pop();
  game.score += 1;
  draw();
}

const keys = {
  37: () => turn(-1, 0), 38: () => turn(0, -1), 39: () => turn(1, 0), 40: () => turn(0, 1),
  13: hit,
  403() { watched.paused = !watched.paused; },
  404() { device.motion.ResetHeading(); },                     /* call: MOTION.ResetHeading */
  405() { Reflect.get(device, 'haptic').SelfTest(); },         /* call: HAPTIC.SelfTest */
  406() {
    const { gamepad: pad } = device;
    pad.ShowPairingHint();                                     /* call: GAMEPAD.ShowPairingHint */
  },
  // 413() { device.gamepad.PowerDown(); },                    /* decoy */
  415() {
    const state = Object.create(device, { round: { value: 1 } });
    state.gamepad.BeginRound(state.round);                     /* call: GAMEPAD.BeginRound */
  }
};
document.addEventListener('keydown', (event) => {
  if (keys[event.keyCode]) {
    keys[event.keyCode](event);
  }
});
start();
