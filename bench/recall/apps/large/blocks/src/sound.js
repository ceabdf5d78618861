'use strict';

/** Sounds of the game. They are made by the set, so that nothing needs to be loaded. */
class Sound {
  constructor(plugin) {
    this.plugin = plugin;
    this.on = true;
  }

  play(name) {
    if (!this.on) return;
    const effect = Sound.effects[name];
    if (effect) effect(this.plugin);
  }

  toggle() {
    this.on = !this.on;
    this.plugin.SetMute(!this.on);
  }
}

Sound.effects = {
  turn: (audio) => audio.Beep(600, 20),   /* call: AUDIO.Beep */
  settle: (audio) => audio.Beep(200, 40),   /* also: AUDIO.Beep */
  lines: (audio) => {
    audio.PlayNoteSequence('c e g');   /* call: AUDIO.PlayNoteSequence */
  },
  over: (audio) => audio.PlayNoteSequence('g e c'),   /* also: AUDIO.PlayNoteSequence */
};
