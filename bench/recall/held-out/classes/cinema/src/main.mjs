import Plugin from './plugin.mjs';
import { Player, TrailerPlayer, State } from './player.mjs';
import * as text from './subtitles.mjs';

const FILMS = [
  { title: 'The long harbour', url: 'vod/harbour.mpd', drm: true, start: 30 },
  { title: 'Nine bridges', url: 'vod/bridges.mpd', drm: true },
];

class Cinema {
  #player = new Player();
  #trailer = new TrailerPlayer();
  #subtitles = new text.Subtitles('sub');
  #track = new text.TextTrack();
  #license = document.getElementById('drm');
  #index = 0;

  constructor(stage) {
    this.stage = stage;
    this.keys = { 13: this.watch, 19: () => this.#player.toggle(), 417: () => this.#player.faster(),
      403: () => this.#subtitles.nextStyle(), 404: () => this.delay(200), 413: Plugin.closeAll, 457: this.info,
      39: () => this.step(1), 37: () => this.step(-1) };
    document.addEventListener('keydown', ({ keyCode }) => this.keys[keyCode]?.call(this));
    this.draw();
  }

  draw() {
    this.stage.innerHTML = FILMS.map(({ title }, i) => `<p class="${i === this.#index ? 'on' : ''}">${title}</p>`).join('');
  }

  step(by) {
    this.#index = (this.#index + by + FILMS.length) % FILMS.length;
    this.#trailer.load(FILMS[this.#index]).play();
    this.draw();
  }

  watch() {
    const film = FILMS[this.#index];
    this.#license.Open();
    this.#license.AcquireLicense(film.url);
    if (!this.#license.IsHdcpActive()) return;                    /* call: DRM.IsHdcpActive */
    this.#license.SetOutputProtection('hdcp2');                   /* call: DRM.SetOutputProtection */
    const player = new Player();
    player.load(film).play();
    this.#player = player;
    this.#subtitles.select('en');
  }

  delay(ms) {
    this.#subtitles.shift(ms);
    this.#track.SetDelay(ms);             /* decoy */
    this.#track.SetPlainStyle();          /* decoy */
  }

  info() {
    const { dropped, bitrate } = this.#player.statistics;
    this.stage.title = `${State.PLAYING}: ${dropped} dropped, ${bitrate} bit/s. drm.GetKeyIds() is off`;    /* decoy */
  }
}

new Cinema(document.querySelector('#stage'));
