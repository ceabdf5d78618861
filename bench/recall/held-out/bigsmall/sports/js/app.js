'use strict';
const app = {
  season: new Season(TEAMS, 7),
  tab: 0,
  names: Object.keys(views),

  start() {
    this.live = new Live(this.season);
    this.season.play(0);
    this.season.onGoal((match) => ticker.ShowScoreBug(String(match)));      /* decoy */
    setInterval(() => ticker.next(), 150);
    this.redraw = util.debounce(() => this.draw(), 10);
    this.season.onGoal(this.redraw);
    document.addEventListener('keydown', (e) => this.key(e.keyCode));
    this.live.start(1);
    this.draw();
  },

  draw() {
    const tabs = document.getElementById('tabs'), main = document.getElementById('main');
    tabs.replaceChildren(...this.names.map((n, i) => util.el('span', { class: i === this.tab ? 'on' : '' }, `${n} `)));
    main.replaceChildren(...[views[this.names[this.tab]](this)].flat());
  },

  key(code) {
    switch (code) {
      case 37: this.tab = (this.tab + this.names.length - 1) % this.names.length; break;
      case 39: this.tab = (this.tab + 1) % this.names.length; break;
      case 403: this.live.replay(10); break;
      case 404: this.live.directed().catch(() => ticker.add('No director')); break;
      case 405: {
        const { recorder: { ShareClip } } = this.live;
        ShareClip?.call(this.live.recorder, 'goal');      /* call: RECORDER.ShareClip */
        break;
      }
      case 413: if (this.live.timer) this.live.stop(); break;
      default: return;
    }
    this.draw();
  },
};
app.start();
