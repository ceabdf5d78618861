(function () {
  var SYMBOLS = ['★', '♥', '♦', '♣', '♠', '☀', '☂', '☺'];

  // ---- cards -------------------------------------------------------------------------------------------------------
  function Card(symbol) {
    this.symbol = symbol;
    this.open = false;
    this.found = false;
    this.node = document.createElement('div');
    this.node.className = 'card';
  }

  Card.prototype = {
    constructor: Card,
    show: function () {
      this.open = true;
      this.draw();
    },
    hide: function () {
      this.open = false;
      this.draw();
    },
    matches: function (other) {
      return other !== this && other.symbol === this.symbol;
    },
    draw: function () {
      this.node.className = 'card' + (this.open || this.found ? ' open' : '');
      this.node.textContent = this.open || this.found ? this.symbol : '';
    }
  };

  // ---- a deck ------------------------------------------------------------------------------------------------------
  function shuffle(list) {
    for (var i = list.length - 1; i > 0; i--) {
      var j = Math.floor(Math.random() * (i + 1)), t = list[i];
      list[i] = list[j];
      list[j] = t;
    }
    return list;
  }

  function deal(pairs) {
    var cards = [];
    SYMBOLS.slice(0, pairs).forEach(function (symbol) {
      cards.push(new Card(symbol), new Card(symbol));
    });
    return shuffle(cards);
  }

  // ---- feedback through the set's own devices --------------------------------------------------------------------------
  function Feedback(haptic) {
    this.haptic = haptic;
    this.enabled = true;
  }

  Feedback.prototype.match = function () {
    if (this.enabled) {
      this.haptic.Play('tick');
      this.haptic.PlayPattern([20, 40, 20]);   /* call: HAPTIC.PlayPattern */
    }
  };

  Feedback.prototype.miss = function () {
    if (this.enabled) {
      this.haptic.Rumble(120);   /* call: HAPTIC.Rumble */
    }
  };

  Feedback.prototype.win = function () {
    this.haptic.SetIntensity(100);
    this.haptic.PlayPattern([80, 80, 80, 80, 400]);   /* also: HAPTIC.PlayPattern */
  };

  // A set without the device gets this one. It does nothing.
  function Silent() {}
  Silent.prototype = Object.create(Feedback.prototype);
  Silent.prototype.haptic = { Rumble: function () {}, PlayPattern: function () {}, SetIntensity: function () {} };
  Silent.prototype.miss = function () {
    this.haptic.Rumble(0);   /* decoy */
  };

  // ---- the game ----------------------------------------------------------------------------------------------------
  function Game(board, feedback) {
    this.board = board;
    this.feedback = feedback;
    this.moves = 0;
    this.cursor = 0;
    this.columns = 4;
    this.cards = [];
    this.first = null;
  }

  Game.prototype.begin = function (pairs) {
    var game = this;
    this.board.innerHTML = '';
    this.cards = deal(pairs);
    this.first = null;
    this.moves = 0;
    this.cards.forEach(function (card, index) {
      card.draw();
      game.board.appendChild(card.node);
      card.node.onclick = function () {
        game.cursor = index;
        game.turn(card);
      };
    });
    this.status();
  };

  Game.prototype.turn = function (card) {
    if (card.open || card.found) {
      return;
    }
    card.show();
    if (!this.first) {
      this.first = card;
      return;
    }
    var first = this.first;
    this.first = null;
    this.moves++;
    if (card.matches(first)) {
      card.found = first.found = true;
      this.feedback.match();
    } else {
      this.feedback.miss();
      setTimeout(function () {
        card.hide();
        first.hide();
      }, 30);
    }
    this.status();
  };

  Game.prototype.remaining = function () {
    return this.cards.filter(function (c) { return !c.found; }).length;
  };

  Game.prototype.status = function () {
    document.getElementById('score').textContent = this.moves + ' moves, ' + this.remaining() / 2 + ' pairs left';
  };

  Game.prototype.move = function (by) {
    this.cards[this.cursor].node.classList.remove('cursor');
    this.cursor = (this.cursor + by + this.cards.length) % this.cards.length;
    this.cards[this.cursor].node.classList.add('cursor');
  };

  // Shows one pair after the other: for children, and for the sales room.
  Game.prototype.solve = function () {
    var game = this;
    this.cards.forEach(function (card) {
      game.cards.some(function (other) {
        if (!card.found && card.matches(other)) {
          card.hide();
          other.hide();
          game.first = null;
          game.turn(card);
          game.turn(other);
          return true;
        }
      });
    });
    this.feedback.win();
  };

  // ---- input -------------------------------------------------------------------------------------------------------
  function Input(game, pad) {
    this.game = game;
    this.pad = pad;
    this.onKey = this.onKey.bind(this);
    document.addEventListener('keydown', this.onKey, false);
    pad.Open();
    pad.SetVibrationLink(true);   /* call: GAMEPAD.SetVibrationLink */
    pad.MapButton('A', 13);   /* call: GAMEPAD.MapButton */
  }

  Input.prototype.onKey = function (event) {
    var game = this.game;
    var steps = { 37: -1, 39: 1, 38: -game.columns, 40: game.columns };
    if (event.keyCode in steps) {
      game.move(steps[event.keyCode]);
    } else if (event.keyCode === 13) {
      game.turn(game.cards[game.cursor]);
    } else if (event.keyCode === 403) {
      game.begin(4);
    } else if (event.keyCode === 404) {
      game.begin(8);
    } else if (event.keyCode === 405) {
      game.solve();
    } else if (event.keyCode === 406) {
      game.feedback = new Silent();
      game.feedback.miss();
      this.pad.SetPlayerLed(1, 'off');   /* call: GAMEPAD.SetPlayerLed */
    }
  };

  var feedback = new Feedback(document.getElementById('buzz'));
  var game = new Game(document.getElementById('board'), feedback);
  game.begin(6);
  feedback.miss();
  game.input = new Input(game, document.getElementById('pad'));
})();
