var PLAYLIST = {
  wall: 'entrance',
  items: [
    { type: 'image', source: 'menu.png', ms: 20 },
    { type: 'video', source: 'spot.mp4', ms: 30 },
    { type: 'html', source: '<h1>Welcome</h1>', ms: 10 },
    { type: 'image', source: 'map.png', ms: 20 }
  ],
  hours: { on: 7, off: 22 }
};
