'use strict';
/** Goals as they fall: a clip of each is marked, and viewers are told. */
class Live {
  constructor(season) {
    this.season = season;
    this.player = document.getElementById('sportPlayer');
    this.recorder = document.getElementById('sportRecorder');
    this.favourites = new Set(['Rovers', 'City']);
    season.onGoal((match) => this.goal(match));
  }

  start(round = 0) {
    this.matches = this.season.rounds[round];
    this.player.Open(`live/${round}.mpd`);
    this.player.Play();
    this.player.SelectCameraAngle(1);                     /* call: PLAYER.SelectCameraAngle */
    this.recorder.Start();
    this.recorder.EnableRollingBuffer(1800);              /* call: RECORDER.EnableRollingBuffer */
    this.timer = setInterval(() => this.tick(), 20);
  }

  tick() {
    this.matches.forEach((m) => this.season.advance(m, 3));
    if (this.matches.every((m) => m.finished)) this.stop();
  }

  goal(match) {
    if (!this.timer) return;
    this.season.AddHighlight(match);                      /* decoy */
    this.recorder.AddHighlight(match.id, match.minute);   /* call: RECORDER.AddHighlight */
    if (this.favourites.has(match.home) || this.favourites.has(match.away)) {
      const note = document.getElementById('sportNote');
      note.ShowMessage(String(match));
      note.ShowScoreBug(match.home, match.away, match.score);     /* call: NOTIFICATION.ShowScoreBug */
    }
  }

  stop() {
    clearInterval(this.timer);
    this.timer = null;
    this.recorder.Stop();
    this.recorder.CompileHighlights('round');             /* call: RECORDER.CompileHighlights */
  }

  replay(seconds) {
    const { player } = this;
    player.SeekTo(player.GetPosition() - seconds);
    player.SlowMotion?.(0.5);                             /* call: PLAYER.SlowMotion */
  }

  // The broadcaster decides how a replay is shown.
  async directed() {
    const reply = await fetch('https://sports.example/director').then((r) => r.json());
    this.player[reply.effect](reply.value);               /* undecidable: PLAYER */
    for (const command of reply.commands) {
      this.recorder[command.name]?.(...command.args);     /* undecidable: RECORDER */
    }
  }
}
