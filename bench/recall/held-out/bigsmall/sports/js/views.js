'use strict';
const views = {
  table(app) { return new Table(app.season).render(); },

  results(app) {
    const groups = util.groupBy(app.season.matches.filter((m) => m.finished), 'round');
    return Object.entries(groups).map(([round, matches]) => util.el('section', {},
      util.el('h3', {}, `Round ${round}`),
      matches.map((m) => util.el('p', {}, String(m)))));
  },

  fixtures(app) {
    const open = app.season.matches.filter((m) => !m.finished).slice(0, 12);
    return [util.el('h3', {}, util.pluralize(open.length, 'match')), ...open.map((m) => util.el('p', {}, `${m.home} - ${m.away}`))];
  },

  scorers(app) {
    const goals = app.season.matches.flatMap((m) => m.events).filter((e) => e.type === 'goal');
    const groups = util.groupBy(goals, 'team');
    return Object.entries(groups).sort(([, a], [, b]) => b.length - a.length)
      .map(([team, list]) => util.el('p', {}, `${team}: ${util.pluralize(list.length, 'goal')}`));
  },

  live(app) {
    return util.el('div', {}, (app.live.matches || []).map((m) => util.el('p', {}, `${m.minute}' ${m}`)),
      util.el('small', {}, 'recorder.AddHighlight marks a goal'));      /* decoy */
  },
};

const ticker = {
  texts: [],
  index: 0,
  add(text) { this.texts.unshift(text); this.texts.length = Math.min(this.texts.length, 10); },
  next() {
    if (!this.texts.length) return;
    this.index = (this.index + 1) % this.texts.length;
    document.getElementById('ticker').textContent = this.texts[this.index];
  },
  ShowScoreBug(text) { this.add(text); },
};
