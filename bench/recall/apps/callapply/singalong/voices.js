// What can be done with a voice. The functions are lent to singers, to choirs, and to the microphone.
var voice = {
    Tune: function (key) {
        this.key = key;
        return this;
    },
    Echo: function (ms) {
        this.echo = ms;
        this.Update && this.Update('echo');     /* decoy */
    },
    prepare: function (gain) {
        this.SetGain(gain);
        this.SetNoiseGate(gain / 2);            /* call: MICROPHONE.SetNoiseGate */
    },
    rehearse: function () {
        this.WarmUp(3);                         /* decoy */
        this.Tune('C');                         /* decoy */
    }
};

function Singer(name) { this.name = name; this.key = 'A'; this.practice = 0; }
Singer.prototype.Tune = voice.Tune;
Singer.prototype.Echo = voice.Echo;
Singer.prototype.WarmUp = function (n) { this.practice += n; };
Singer.prototype.Update = function (what) { document.getElementById('lyrics').title = this.name + what; };
Singer.prototype.Sing = function (line) { document.getElementById('lyrics').textContent = this.name + ': ' + line; };

function Choir() { this.singers = Array.prototype.slice.call(arguments); }
Choir.prototype.Sing = function () {
    var args = arguments;
    this.singers.forEach(function (singer) {
        singer.Sing.apply(singer, args);        /* decoy */
    });
};
Choir.prototype.WarmUp = function (n) {
    this.singers.forEach(function (singer) { Singer.prototype.WarmUp.call(singer, n); });   /* decoy */
};
Choir.prototype.Tune = function (key) {
    for (var i = 0; i < this.singers.length; i++) {
        voice.Tune.call(this.singers[i], key);  /* decoy */
    }
};
