'use strict';

/** The best ten, kept in the browser's storage. */
const scores = {
  key: 'blocks.scores',

  load() {
    try {
      return JSON.parse(localStorage.getItem(this.key)) || [];
    } catch (error) {
      return [];
    }
  },

  add(points, name = 'TV') {
    const all = [...this.load(), { points, name, at: Date.now() }].sort((a, b) => b.points - a.points).slice(0, 10);
    localStorage.setItem(this.key, JSON.stringify(all));
    return all.findIndex((score) => score.points === points);
  },

  best() {
    const [first] = this.load();
    return first ? first.points : 0;
  },

  // Beeps are counted for the statistics of the game.
  Beep(n) {
    this.beeps = (this.beeps || 0) + n;
    return this;
  },
};
