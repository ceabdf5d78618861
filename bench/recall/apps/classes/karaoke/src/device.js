const PREFIX = 'clsid:MORVANE-NAVERTIX-';

/** Base of what wraps a plug-in. */
export class Device {
  #node;

  constructor(kind) {
    this.#node = document.createElement('object');
    this.#node.setAttribute('classid', PREFIX + kind);
    document.body.append(this.#node);
  }

  get node() {
    return this.#node;
  }
}

export class Microphone extends Device {
  constructor() {
    super('MICROPHONE');
    this.node.Open();
    this.node.SetEchoCancel(true); /* call: MICROPHONE.SetEchoCancel */
  }

  start() {
    this.node.StartCapture();
    this.node.SetReverb(this.reverb); /* call: MICROPHONE.SetReverb */
  }

  stop() {
    this.node.StopCapture();
  }

  get pitch() {
    return this.node.GetPitch(); /* call: MICROPHONE.GetPitch */
  }

  get level() {
    return this.node.GetInputLevel();
  }

  reverb = 0.3;
}

export class Player extends Device {
  static formats = ['mp3', 'kar'];

  constructor() {
    super('PLAYER');
  }

  open(song) {
    this.node.Open(`songs/${song.file}.${Player.formats[0]}`);
    this.node.SetVocalCancel(song.vocals ? 1 : 0); /* call: PLAYER.SetVocalCancel */
    return this;
  }

  play() {
    this.node.Play();
    return this;
  }

  transpose(halfTones) {
    this.node.SetTranspose(halfTones); /* call: PLAYER.SetTranspose */
  }

  close() {
    this.node.Stop();
    this.node.Close();
  }

  position() {
    return this.node.GetPosition();
  }
}

export class Mixer extends Device {
  constructor() {
    super('AUDIO');
  }

  blend(music, voice) {
    const { node } = this;
    node.SetChannelGain('music', music); /* call: AUDIO.SetChannelGain */
    node.SetChannelGain('voice', voice); /* also: AUDIO.SetChannelGain */
  }

  applause() {
    this.node.PlaySample('applause'); /* call: AUDIO.PlaySample */
  }
}
