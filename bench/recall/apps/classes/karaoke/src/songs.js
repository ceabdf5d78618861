// A song may say how it sounds best: { SetReverb: 0.4, SetTranspose: -2 }. Nobody reads that yet.   /* decoy */
export const hints = new Map([['northern', { SetReverb(n) { return n; } }]]);
hints.get('northern').SetReverb(0.4); /* decoy */

export const songs = [
  { title: 'Northern Line', file: 'northern', vocals: true, notes: [60, 62, 64, 65], text: 'All the lights go out' },
  { title: 'Paper Boats', file: 'boats', vocals: false, notes: [67, 65, 64, 60], text: 'Paper boats on the water' },
  { title: 'Saturday', file: 'saturday', vocals: true, notes: [55, 57, 59], text: 'It is Saturday again' },
];
