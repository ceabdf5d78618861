import Plugin from './plugin.mjs';

export const State = Object.freeze({ IDLE: 0, PLAYING: 1, PAUSED: 2 });

export class Player extends Plugin {
  state = State.IDLE;
  #speeds = [1, 2, 4, 8];
  #speed = 0;

  constructor(id = 'media') {
    super(id);
    this.native.SetZOrder?.(0);                                   /* call: PLAYER.SetZOrder */
  }

  load({ url, start = 0, drm = false }) {
    this.open(url);
    if (drm) this.native.AttachDrmSession('drm');                 /* call: PLAYER.AttachDrmSession */
    if (start) this.native.SeekTo(start);
    return this;
  }

  play() {
    this.native.Play();
    this.state = State.PLAYING;
    this.native.SetQualityCap(1080);                              /* call: PLAYER.SetQualityCap */
  }

  toggle() {
    const { native } = this;
    if (this.state === State.PLAYING) {
      native.Pause();
      this.state = State.PAUSED;
    } else {
      native.Resume();
      this.state = State.PLAYING;
    }
  }

  faster() {
    this.#speed = (this.#speed + 1) % this.#speeds.length;
    this.native.SetPlaybackRate(this.#speeds[this.#speed]);
    this.native.MuteTrickPlay(this.#speed > 0);                   /* call: PLAYER.MuteTrickPlay */
  }

  get statistics() {
    const { native: n } = this;
    return { dropped: n.GetDroppedFrames(), bitrate: n.GetBitrate() };     /* call: PLAYER.GetDroppedFrames, PLAYER.GetBitrate */
  }

  close() {
    this.native.Stop();
    super.close();
    this.native.ReleaseDecoder();                                 /* call: PLAYER.ReleaseDecoder */
  }
}

export class TrailerPlayer extends Player {
  load(film) {
    super.load({ ...film, drm: false, start: 0 });
    this.native.SetLooping(true);                                 /* call: PLAYER.SetLooping */
    return this;
  }
}
