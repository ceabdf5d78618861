'use strict';
const TEAMS = ['Rovers', 'United', 'Athletic', 'Wanderers', 'City', 'Albion', 'Orient', 'Rangers'];

class Match {
  constructor(id, home, away, round) {
    Object.assign(this, { id, home, away, round, goals: [0, 0], minute: 0, events: [] });
  }
  get finished() { return this.minute >= 90; }
  get score() { return this.goals.join(':'); }
  get winner() {
    const [h, a] = this.goals;
    return h === a ? null : h > a ? this.home : this.away;
  }
  goal(side) {
    this.goals[side]++;
    this.events.push({ minute: this.minute, type: 'goal', team: side ? this.away : this.home });
  }
  toString() { return `${this.home} - ${this.away} ${this.score}`; }
}

/** Everybody plays everybody: the circle method. */
function fixtures(teams) {
  const ring = teams.slice(), rounds = [];
  for (let r = 0; r < teams.length - 1; r++) {
    const round = [];
    for (let i = 0; i < teams.length / 2; i++) {
      const pair = [ring[i], ring[teams.length - 1 - i]];
      if (r % 2) pair.reverse();
      round.push(new Match(r * 10 + i, pair[0], pair[1], r + 1));
    }
    rounds.push(round);
    ring.splice(1, 0, ring.pop());
  }
  return rounds;
}

class Season {
  constructor(teams, seed) {
    this.rounds = fixtures(teams);
    this.random = util.random(seed);
    this.listeners = [];
  }
  get matches() { return this.rounds.flat(); }
  onGoal(fn) { this.listeners.push(fn); }
  play(round) {
    for (const match of this.rounds[round]) {
      while (!match.finished) this.advance(match, 5);
    }
  }
  advance(match, minutes) {
    match.minute = Math.min(90, match.minute + minutes);
    if (this.random() < 0.12) {
      match.goal(this.random() < 0.55 ? 0 : 1);
      this.listeners.forEach((fn) => fn(match));
    }
  }
  // Statistics are marked here, not on a recording.
  AddHighlight(match) { (this.highlights ||= []).push(match.id); }
}
