import { Microphone, Mixer, Player } from './device.js';
import { Score } from './score.js';
import { songs } from './songs.js';

class Show {
  selected = 0;
  current = null;
  key = 0;

  constructor(root) {
    this.root = root;
    this.microphone = new Microphone();
    this.player = new Player();
    this.mixer = new Mixer();
    this.mixer.blend(80, 60);
    this.drawList();
    addEventListener('keydown', (event) => this.onKey(event));
  }

  drawList() {
    document.querySelector('#songs').replaceChildren(...songs.map((song, index) => {
      const item = document.createElement('li');
      item.textContent = song.title;
      item.setAttribute('aria-selected', String(index === this.selected));
      item.addEventListener('click', () => this.sing(song));
      return item;
    }));
  }

  sing(song) {
    this.finish();
    this.current = song;
    this.score = new Score();
    this.player.open(song).play();
    this.microphone.start();
    this.root.querySelector('h1').textContent = song.title;
    this.root.querySelector('#line').textContent = song.text;
    this.timer = setInterval(() => this.listen(), 50);
    this.listen();
  }

  listen() {
    const { notes } = this.current;
    const index = Math.floor(this.player.position() / 500) % notes.length;
    this.score.note(notes[index], this.microphone.pitch);
    this.root.querySelector('#level').value = this.microphone.level;
    this.root.querySelector('#score').textContent = `${this.score.percent}% (${this.score.GetPitch()})`; /* decoy */
  }

  finish() {
    if (!this.current) return;
    clearInterval(this.timer);
    this.player.close();
    this.microphone.stop();
    this.mixer.applause();
    this.current = null;
  }

  onKey({ keyCode }) {
    switch (keyCode) {
      case 38:
        this.selected = Math.max(0, this.selected - 1);
        this.drawList();
        break;
      case 40:
        this.selected = Math.min(songs.length - 1, this.selected + 1);
        this.drawList();
        break;
      case 13:
        this.sing(songs[this.selected]);
        break;
      case 37:
      case 39:
        this.player.transpose((this.key += keyCode - 38));
        break;
      case 403:
        this.microphone.node.SetHarmonizer('third'); /* call: MICROPHONE.SetHarmonizer */
        break;
      case 404:
        this.mixer.node?.SetStageEffect?.('hall'); /* call: AUDIO.SetStageEffect */
        break;
      case 413:
        this.finish();
        break;
    }
  }
}

window.show = new Show(document.querySelector('#stage'));
