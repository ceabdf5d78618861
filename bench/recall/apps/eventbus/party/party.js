(function () {
  var SONGS = [{ id: 5, title: 'Blue bicycle', bpm: 110 }, { id: 9, title: 'Paper moon', bpm: 84 }];
  var context = {
    mic: document.getElementById('mic1'),
    subtitle: document.getElementById('sub1'),
    player: document.getElementById('play1'),
    song: SONGS[0],
    points: 0
  };

  var party = new Machine({
    initial: 'lobby',
    states: {
      lobby: {
        entry: function (c) { c.subtitle.ClearLyrics(); },     /* call: SUBTITLE.ClearLyrics */
        on: { choose: { target: 'lobby', action: function (c, song) { c.song = song; } }, start: 'singing' }
      },
      singing: {
        entry: function (c) {
          c.mic.EnableEcho(0.3);                               /* call: MICROPHONE.EnableEcho */
          c.player.RemoveVocals(true);                         /* call: PLAYER.RemoveVocals */
          c.player.Play();
          Bus.publish('song/start', c);
        },
        exit: function (c) { c.player.RestoreVocals(); },      /* call: PLAYER.RestoreVocals */
        on: {
          pause: 'paused',
          end: { target: 'results', guard: function (c) { return c.points >= 0; } }
        }
      },
      paused: {
        entry: function (c) { c.player.Pause(); c.mic.MuteMonitor(); },   /* call: MICROPHONE.MuteMonitor */
        on: { pause: 'singing', end: 'lobby' }
      },
      results: {
        entry: function (c, done) { Bus.publish('song/end', { score: c.points, done: done, mic: c.mic }); },
        on: { start: 'lobby' }
      }
    }
  }, context);

  Bus.subscribe('song/start', function (c) {
    c.subtitle.Show();
    c.subtitle.StartKaraoke(c.song.bpm);                       /* call: SUBTITLE.StartKaraoke */
  });
  Bus.subscribe('song/*', function (data, topic) {
    document.getElementById('lyrics').textContent = topic;
    if (data.mic && data.score !== undefined) {
      data.mic.SaveTake(data.score);                           /* call: MICROPHONE.SaveTake */
    }
  });
  Bus.once('song/end', function (result) {
    result.mic.GetPitchAccuracy();                             /* call: MICROPHONE.GetPitchAccuracy */
  });
  Bus.subscribe('need/player', function (request) { request.reply(context.player); });
  Bus.subscribe('jury/vote', function (jury) {
    jury.SaveTake('jury');                                     /* decoy */
    document.getElementById('points').textContent = jury.takes.length;
  });

  // Custom events of the page are the second bus: for the parts of the other team.
  document.addEventListener('party:applause', function (event) {
    event.detail.player.PlaySample('applause');                /* call: PLAYER.PlaySample */
  });

  document.addEventListener('keydown', function (e) {
    switch (e.keyCode) {
      case 38: party.send('choose', SONGS[0]); break;
      case 40: party.send('choose', SONGS[1]); break;
      case 13: party.send('start'); break;
      case 19: case 32: case 34: party.send('pause'); break;
      case 403: document.dispatchEvent(new CustomEvent('party:applause', { detail: context })); break;
      case 404: Bus.publish('jury/vote', { takes: [], SaveTake: function (t) { this.takes.push(t); } }); break;
      case 405:
        Bus.request('need/player').then(function (player) {
          player.SetKeyShift(-2);                              /* call: PLAYER.SetKeyShift */
        });
        break;
      case 406: Bus.publish('log/line', 'context.mic.BoostTalent()'); break;   /* decoy */
      case 413: party.send('end'); break;
    }
  });
}());
