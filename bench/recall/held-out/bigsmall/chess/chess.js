/* Chess against the set. Small engine: mailbox board, alpha-beta, piece values. */
var Chess = (function (window, document) {
  'use strict';

  var EMPTY = '.', START = 'rnbqkbnrpppppppp................................PPPPPPPPRNBQKBNR';
  var VALUES = { p: 100, n: 320, b: 330, r: 500, q: 900, k: 20000 };
  var SYMBOLS = { K: '\u2654', Q: '\u2655', R: '\u2656', B: '\u2657', N: '\u2658', P: '\u2659', k: '\u265a', q: '\u265b', r: '\u265c', b: '\u265d', n: '\u265e', p: '\u265f' };
  var STEPS = {
    n: [[1, 2], [2, 1], [2, -1], [1, -2], [-1, -2], [-2, -1], [-2, 1], [-1, 2]],
    k: [[1, 0], [1, 1], [0, 1], [-1, 1], [-1, 0], [-1, -1], [0, -1], [1, -1]],
    b: [[1, 1], [1, -1], [-1, 1], [-1, -1]],
    r: [[1, 0], [-1, 0], [0, 1], [0, -1]]
  };
  STEPS.q = STEPS.b.concat(STEPS.r);

  // ---- position -------------------------------------------------------------------------------------------------

  function Position(squares, white) {
    this.squares = squares;
    this.white = white;
  }

  Position.initial = function () { return new Position(START.split(''), true); };

  function isWhite(piece) { return piece >= 'A' && piece <= 'Z'; }
  function isBlack(piece) { return piece >= 'a' && piece <= 'z'; }

  Position.prototype.own = function (piece) { return this.white ? isWhite(piece) : isBlack(piece); };
  Position.prototype.enemy = function (piece) { return this.white ? isBlack(piece) : isWhite(piece); };

  Position.prototype.moves = function () {
    var list = [], i;
    for (i = 0; i < 64; i++) {
      if (this.own(this.squares[i])) { this.from(i, list); }
    }
    return list;
  };

  Position.prototype.from = function (i, list) {
    var piece = this.squares[i].toLowerCase(), x = i % 8, y = i >> 3, self = this;

    function slide(step, once) {
      var cx = x + step[0], cy = y + step[1];
      while (cx >= 0 && cx < 8 && cy >= 0 && cy < 8) {
        var target = self.squares[cy * 8 + cx];
        if (self.own(target)) { return; }
        list.push({ from: i, to: cy * 8 + cx, capture: target });
        if (target !== EMPTY || once) { return; }
        cx += step[0];
        cy += step[1];
      }
    }

    if (piece === 'p') {
      this.pawn(i, x, y, list);
    } else {
      STEPS[piece].forEach(function (step) { slide(step, piece === 'n' || piece === 'k'); });
    }
  };

  Position.prototype.pawn = function (i, x, y, list) {
    var d = this.white ? -8 : 8, home = this.white ? 6 : 1, s = this.squares;
    if (s[i + d] === EMPTY) {
      list.push({ from: i, to: i + d, capture: EMPTY });
      if (y === home && s[i + 2 * d] === EMPTY) { list.push({ from: i, to: i + 2 * d, capture: EMPTY }); }
    }
    if (x > 0 && this.enemy(s[i + d - 1] || EMPTY)) { list.push({ from: i, to: i + d - 1, capture: s[i + d - 1] }); }
    if (x < 7 && this.enemy(s[i + d + 1] || EMPTY)) { list.push({ from: i, to: i + d + 1, capture: s[i + d + 1] }); }
  };

  Position.prototype.play = function (move) {
    var squares = this.squares.slice(), piece = squares[move.from];
    squares[move.to] = piece;
    squares[move.from] = EMPTY;
    if (piece === 'P' && move.to < 8) { squares[move.to] = 'Q'; }
    if (piece === 'p' && move.to > 55) { squares[move.to] = 'q'; }
    return new Position(squares, !this.white);
  };

  Position.prototype.evaluate = function () {
    var sum = 0;
    for (var i = 0; i < 64; i++) {
      var piece = this.squares[i];
      if (piece !== EMPTY) {
        var centre = 4 - Math.abs(3.5 - i % 8) + 4 - Math.abs(3.5 - (i >> 3));
        sum += (isWhite(piece) ? 1 : -1) * (VALUES[piece.toLowerCase()] + centre * 3);
      }
    }
    return this.white ? sum : -sum;
  };

  Position.prototype.toString = function () {
    var text = '';
    for (var y = 0; y < 8; y++) { text += this.squares.slice(y * 8, y * 8 + 8).join('') + '/'; }
    return text + (this.white ? ' w' : ' b');
  };

  // ---- search ---------------------------------------------------------------------------------------------------

  function search(position, depth, alpha, beta) {
    if (depth === 0) { return { score: position.evaluate() }; }
    var best = null, moves = position.moves();
    moves.sort(function (a, b) { return gain(b) - gain(a); });
    for (var i = 0; i < moves.length; i++) {
      if (moves[i].capture.toLowerCase() === 'k') { return { score: 30000 + depth, move: moves[i] }; }
      var score = -search(position.play(moves[i]), depth - 1, -beta, -alpha).score;
      if (!best || score > alpha) { best = moves[i]; }
      if (score > alpha) { alpha = score; }
      if (alpha >= beta) { break; }
    }
    return { score: alpha, move: best };
  }

  function gain(move) { return move.capture === EMPTY ? 0 : VALUES[move.capture.toLowerCase()]; }

  function name(square) { return 'abcdefgh'.charAt(square % 8) + (8 - (square >> 3)); }

  // ---- devices --------------------------------------------------------------------------------------------------

  // What the game needs of the set, by role. Anything that is missing does nothing.
  var roles = {
    pointer: ['remoteDevice', { show: 'ShowPointer', move: 'WarpPointer', hide: 'HidePointer' }],       /* call: REMOTE.ShowPointer, REMOTE.WarpPointer, REMOTE.HidePointer */
    saves: ['saveGames', { write: 'SetItem', read: 'GetItem', list: 'ListKeys', sign: 'SealItem' }],      /* call: STORAGE.ListKeys, STORAGE.SealItem */
    pad: ['padDevice', { glow: 'SetGlow', start: 'Open', press: 'WaitForPress' }]                         /* call: GAMEPAD.SetGlow, GAMEPAD.WaitForPress */
  };

  function device(role) {
    var entry = roles[role], plugin = document.getElementById(entry[0]), verbs = entry[1], api = {};
    Object.keys(verbs).forEach(function (verb) {
      api[verb] = function () {
        var method = plugin && plugin[verbs[verb]];
        return method ? method.apply(plugin, arguments) : undefined;    /* also: REMOTE.ShowPointer, REMOTE.WarpPointer, REMOTE.HidePointer, STORAGE.ListKeys, STORAGE.SealItem, GAMEPAD.SetGlow, GAMEPAD.WaitForPress */
      };
    });
    return api;
  }

  // The opponent's pointer is only drawn.
  var ghost = { at: 0, WarpPointer: function (i) { this.at = i; }, ShowPointer: function () { this.shown = true; } };

  // ---- game -----------------------------------------------------------------------------------------------------

  var position = Position.initial(), cursor = 52, picked = -1, thinking = false, log = [];
  var pointer = device('pointer'), saves = device('saves'), pad = device('pad');

  function draw() {
    var html = '';
    for (var i = 0; i < 64; i++) {
      if (i % 8 === 0) { html += '<tr>'; }
      var dark = (i % 8 + (i >> 3)) % 2;
      html += '<td class="' + (dark ? 'd' : 'l') + (i === cursor ? ' cur' : '') + '">' + (SYMBOLS[position.squares[i]] || '') + '</td>';
    }
    document.getElementById('board').innerHTML = html;
    document.getElementById('status').textContent = thinking ? 'Thinking\u2026' : picked >= 0 ? name(picked) : 'Your move';
    document.getElementById('moves').innerHTML = log.map(function (m) { return '<li>' + m + '</li>'; }).join('');
  }

  function perform(move) {
    log.push(name(move.from) + (move.capture === EMPTY ? '-' : 'x') + name(move.to));
    position = position.play(move);
    saves.write('game', position.toString());
    saves.sign('game');
    draw();
  }

  function choose() {
    if (thinking) { return; }
    if (picked < 0) {
      if (position.own(position.squares[cursor])) { picked = cursor; }
    } else {
      var legal = position.moves().filter(function (m) { return m.from === picked && m.to === cursor; })[0];
      picked = -1;
      if (legal) {
        perform(legal);
        reply();
      }
    }
    draw();
  }

  function reply() {
    thinking = true;
    pointer.hide();
    setTimeout(function () {
      var found = search(position, 2, -Infinity, Infinity);
      thinking = false;
      if (found.move) { perform(found.move); }
      ghost.WarpPointer(found.move.to);                   /* decoy */
      ghost.ShowPointer();                                /* decoy */
      document.getElementById('remoteDevice').Vibrate(30);      /* call: REMOTE.Vibrate */
      pointer.show();
    }, 5);
  }

  function hint() {
    var found = search(position, 2, -Infinity, Infinity);
    if (found.move) {
      cursor = found.move.from;
      picked = cursor;
      pointer.move(cursor % 8, cursor >> 3);
      pad.glow('green');
      cursor = found.move.to;
    }
    draw();
  }

  function onKey(e) {
    var x = cursor % 8, y = cursor >> 3;
    switch (e.keyCode) {
      case 37: x = Math.max(0, x - 1); break;
      case 39: x = Math.min(7, x + 1); break;
      case 38: y = Math.max(0, y - 1); break;
      case 40: y = Math.min(7, y + 1); break;
      case 13: choose(); return;
      case 403: hint(); choose(); return;
      case 404: document.title = saves.list() + ' games'; return;
      case 405: position = Position.initial(); log = []; picked = -1; break;
      case 457: document.title = 'remote.SetGyro() and pad.SetTouchBar()'; return;      /* decoy */
      default: return;
    }
    cursor = y * 8 + x;
    draw();
  }

  pad.start();
  pad.press(function () { choose(); });
  window.addEventListener('keydown', onKey);
  draw();
  return { search: search, Position: Position };
}(window, document));
