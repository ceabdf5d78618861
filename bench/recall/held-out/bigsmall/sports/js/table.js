'use strict';
class Table {
  constructor(season) { this.season = season; }

  rows() {
    const rows = new Map(TEAMS.map((name) => [name, { name, played: 0, won: 0, drawn: 0, lost: 0, scored: 0, got: 0, points: 0 }]));
    for (const match of this.season.matches.filter((m) => m.finished)) {
      const sides = [[match.home, 0], [match.away, 1]];
      for (const [team, side] of sides) {
        const row = rows.get(team);
        row.played++;
        row.scored += match.goals[side];
        row.got += match.goals[1 - side];
        if (!match.winner) {
          row.drawn++;
          row.points += 1;
        } else if (match.winner === team) {
          row.won++;
          row.points += 3;
        } else {
          row.lost++;
        }
      }
    }
    return [...rows.values()].sort(Table.compare);
  }

  static compare(a, b) {
    return b.points - a.points || (b.scored - b.got) - (a.scored - a.got) || b.scored - a.scored || a.name.localeCompare(b.name);
  }

  form(team, n = 5) {
    return this.season.matches.filter((m) => m.finished && (m.home === team || m.away === team)).slice(-n)
      .map((m) => (m.winner === null ? 'D' : m.winner === team ? 'W' : 'L')).join('');
  }

  render() {
    const head = ['', 'Team', 'P', 'W', 'D', 'L', 'Goals', 'Pts', 'Form'];
    return util.el('table', { class: 'league' },
      util.el('tr', {}, head.map((h) => util.el('th', {}, h))),
      this.rows().map((r, i) => util.el('tr', {},
        [i + 1, r.name, r.played, r.won, r.drawn, r.lost, `${r.scored}:${r.got}`, r.points, this.form(r.name)]
          .map((v) => util.el('td', {}, String(v))))));
  }
}
