(function (document) {
    var mic = document.getElementById('mic'), sound = document.getElementById('snd');
    var ann = new Singer('Ann'), bob = new Singer('Bob'), choir = new Choir(ann, bob);

    voice.prepare.call(mic, 10);
    voice.rehearse.call(ann);
    voice.rehearse.apply(choir);

    // A method of a singer, bound to one: it is not the microphone's.
    var warm = ann.WarmUp.bind(ann);
    var monitor = mic.SetMonitor.bind(mic, true);       /* call: MICROPHONE.SetMonitor */

    function twice(fn) {
        fn(1);                                          /* also: MICROPHONE.SetMonitor */
        fn(2);                                          /* also: MICROPHONE.SetMonitor */
    }
    twice(warm);
    twice(monitor);                                     /* also: MICROPHONE.SetMonitor */

    function loud() {
        this.SetVolume(80);
        this.SetReverb('hall');                         /* call: AUDIO.SetReverb */
    }
    function soft() {
        this.Echo(50);                                  /* decoy */
        this.Sing('la');                                /* decoy */
    }
    var tracks = [[loud, sound], [soft, ann], [soft, bob]];
    function play() {
        tracks.forEach(function (track) { track[0].call(track[1]); });
    }

    var score = {
        points: 0,
        PitchError: function () { return 12 - this.points; },
        Award: function (n) { this.points += n; },
        ask: function () {
            var error = mic.GetPitch.apply(mic, [20]);  /* call: MICROPHONE.GetPitch */
            this.Award(this.PitchError() - error);      /* decoy */
        }
    };
    // Lent: the choir counts with the functions of the score.
    choir.points = 0;
    choir.Award = score.Award;

    document.getElementById('again').addEventListener('click', score.ask.bind(score), false);
    document.getElementById('again').onclick = function () {
        this.Award = score.Award;                       // on the button, for the style of it
        this.Award(1);                                  /* decoy */
        sound.Award(1);                                 /* call: AUDIO.Award */
    };

    document.addEventListener('keydown', function (e) {
        switch (e.keyCode) {
        case 13: play(); break;
        case 38: choir.Tune('D'); break;                /* decoy */
        case 40: choir.Sing('Oh'); break;               /* decoy */
        case 403: choir.Award.call(choir, 5); break;    /* decoy */
        case 404: Singer.prototype.Echo.call(bob, 10); break;           /* decoy */
        case 405: mic.Echo.call(mic, 30); break;        /* call: MICROPHONE.Echo */
        case 406: mic['Tune'].apply(mic, ['A']); break; /* call: MICROPHONE.Tune */
        case 27:
            Array.prototype.forEach.call([ann, bob], function (one) { one.WarmUp(0); });    /* decoy */
            Choir.prototype.WarmUp.call({ singers: [bob] }, 1);         /* decoy */
            Reflect.apply(sound.FadeAll, sound, [0]);   /* call: AUDIO.FadeAll */
            break;
        }
    }, false);
}(document));
