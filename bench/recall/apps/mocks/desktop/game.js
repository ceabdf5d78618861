(function () {
    var pad = platform.get('pad'), haptic = platform.get('haptic');
    var account = platform.get('account'), storage = platform.get('storage');

    /* Things on the field. */
    function Ship() { this.x = 100; this.lives = 2; this.shots = []; }
    Ship.prototype.Fire = function () { this.shots.push({ x: this.x, y: 0 }); };
    Ship.prototype.Turn = function (by) { this.x += by; };
    Ship.prototype.Hit = function () {
        this.lives--;
        haptic.Rumble(255, 200);                                /* call: HAPTIC.Rumble */
        if (this.lives === 0) { this.Explode(); }               /* decoy */
    };
    Ship.prototype.Explode = function () {
        haptic.PlayPattern([1, 0, 1]);                          /* call: HAPTIC.PlayPattern */
        account.PostScore(score);                               /* decoy */
        this.lives = 2;
    };
    Ship.prototype.Draw = function (context) { context.fillRect(this.x, 300, 20, 10); };

    function Asteroid(x) { this.x = x; this.y = 0; }
    Asteroid.prototype.Step = function () { this.y += 2; return this.y < 360; };
    Asteroid.prototype.Draw = function (context) { context.fillRect(this.x, this.y, 12, 12); };

    var ship = new Ship(), rocks = [new Asteroid(50), new Asteroid(200)], score = 0;
    var context = document.getElementById('field').getContext('2d');

    function frame() {
        context.clearRect(0, 0, 640, 360);
        [ship].concat(rocks).forEach(function (thing) {
            thing.Draw(context);                                /* decoy */
        });
        rocks = rocks.filter(function (rock) { return rock.Step(); });      /* decoy */
        if (rocks.length < 2) { rocks.push(new Asteroid(Math.random() * 600)); }
        var state = pad.Poll(0);                                /* call: GAMEPAD.Poll */
        if (state && state.fire) { ship.Fire(); }
        document.getElementById('debug').textContent = account.GetUserName() + ' ' + score;
    }

    function greet() {
        account.SignIn();
        var friends = account.GetFriends();                     /* decoy */
        document.getElementById('debug').textContent = 'Play with ' + friends.join(', ') + account.GetAvatar();     /* decoy */
    }

    function save() {
        storage.Transaction(function (store) {                  /* decoy */
            store.SetItem('score', score);
            store.SetItem('lives', ship.lives);
        });
    }

    if (platform.isReal('pad')) {
        pad.SetLed(0, '#00f');                                  /* call: GAMEPAD.SetLed */
    } else {
        account.PostScore(0);
    }

    document.onkeydown = function (e) {
        switch (e.keyCode) {
        case 37: ship.Turn(-5); break;                          /* decoy */
        case 39: ship.Turn(5); break;                           /* decoy */
        case 13: ship.Fire(); score++; break;                   /* decoy */
        case 40: ship.Hit(); break;                             /* decoy */
        case 403: greet(); break;
        case 404: save(); break;
        case 405: storage.Vacuum(); break;                      /* decoy */
        case 406: pad.Recenter(0); break;                       /* call: GAMEPAD.Recenter */
        case 27:
            pad.Turn('off');                                    /* call: GAMEPAD.Turn */
            haptic.Mute(true);                                  /* call: HAPTIC.Mute */
            account.PostScore(score);                           /* decoy */
            break;
        }
    };
    setInterval(frame, 40);
    mocks.pad.SetLed(0, 'off');                                 /* decoy */
    mocks.haptic.Rumble(1, 1);                                  /* decoy */
}());
