'use strict';

const context = {
  recorder: document.getElementById('recorder'),
  player: document.getElementById('player'),
  tuner: document.getElementById('tuner'),
  speed: 1,
};

const SPEEDS = [1, 2, 4, 8];

const machine = new Machine({
  initial: 'live',
  states: {
    live: {
      enter() {
        this.player.Stop();
        this.tuner.AttachToScreen();   /* call: TUNER.AttachToScreen */
        this.recorder.StartTimeshift(90);   /* call: RECORDER.StartTimeshift */
      },
      leave() {
        this.tuner.DetachFromScreen();   /* call: TUNER.DetachFromScreen */
      },
      on: { pause: 'paused', rewind: 'rewinding', record: 'recording' },
    },
    paused: {
      enter() {
        this.recorder.HoldTimeshift();   /* call: RECORDER.HoldTimeshift */
        this.player.ShowStillPicture();   /* call: PLAYER.ShowStillPicture */
      },
      on: { play: 'behind', live: 'live' },
    },
    behind: {
      enter() {
        this.player.Open('timeshift:');
        this.player.Play();
        this.player.SetLiveOffset(30);   /* call: PLAYER.SetLiveOffset */
      },
      on: {
        pause: 'paused',
        rewind: 'rewinding',
        live: 'live',
        record() {
          this.recorder.ConvertTimeshift();   /* call: RECORDER.ConvertTimeshift */
          return 'recording';
        },
      },
    },
    rewinding: {
      enter() {
        this.speed = SPEEDS[(SPEEDS.indexOf(this.speed) + 1) % SPEEDS.length];
        this.player.SetPlaybackRate(-this.speed);
        this.player.ShowThumbnailStrip(true);   /* call: PLAYER.ShowThumbnailStrip */
      },
      leave() {
        this.speed = 1;
        this.player.SetPlaybackRate(1);
      },
      on: { rewind: 'rewinding', play: 'behind', live: 'live' },
    },
    recording: {
      enter() {
        this.recorder.Start();
        this.recorder.ProtectFromDeletion('today');   /* call: RECORDER.ProtectFromDeletion */
      },
      leave() {
        this.recorder.Stop();
      },
      on: { stop: 'live', pause: 'paused' },
    },
  },
}, context);

machine.observe((name) => {
  document.getElementById('state').textContent = name;
  context.player.SetOsdText(name);   /* call: PLAYER.SetOsdText */
});

const keys = { 19: 'pause', 415: 'play', 412: 'rewind', 413: 'stop', 416: 'record', 417: 'live', 403: 'record', 404: 'live', 13: 'pause', 38: 'play', 39: 'record', 40: 'rewind', 49: 'play', 50: 'rewind' };

addEventListener('keydown', ({ keyCode }) => {
  if (keys[keyCode]) machine.send(keys[keyCode]);
  if (keyCode === 405) {
    const { tuner: { ReacquireSignal: again }, tuner } = context;
    again.call(tuner, 3);   /* call: TUNER.ReacquireSignal */
  }
});

// A second machine, for the test of the first: it has its own devices.
const dryRun = {
  tuner: { AttachToScreen() {}, DetachFromScreen() {} },
  recorder: { StartTimeshift() {} },
};
const dry = new Machine({
  initial: 'on',
  states: {
    on: { enter() { this.tuner.AttachToScreen(); this.recorder.StartTimeshift(1); }, on: { off: 'off' } },   /* decoy */
    off: { enter() { this.tuner.DetachFromScreen(); } },   /* decoy */
  },
}, dryRun);
dry.send('off');
