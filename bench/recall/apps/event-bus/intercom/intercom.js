'use strict';

// Events go through the document: every part listens for what it needs.
const send = (name, detail = {}) => document.dispatchEvent(new CustomEvent(`intercom:${name}`, { detail }));
const on = (name, handler) => document.addEventListener(`intercom:${name}`, (event) => handler(event.detail, event));

class Part {
  constructor(id) {
    this.plugin = document.getElementById(id);
    for (const name of Object.getOwnPropertyNames(Object.getPrototypeOf(this))) {
      const match = /^on([A-Z]\w*)$/.exec(name);
      if (match) on(match[1].toLowerCase(), this[name].bind(this));
    }
  }
}

class Camera extends Part {
  onRing() {
    this.plugin.Open();
    this.plugin.SetNightVision('auto'); /* call: CAMERA.SetNightVision */
    this.plugin.StartPreview();
  }

  onAnswer({ zoom = 1 }) {
    this.plugin.SetZoom(zoom);
    this.plugin.SetPrivacyMask(null); /* call: CAMERA.SetPrivacyMask */
  }

  onSnapshot() {
    const path = this.plugin.TakePicture();
    this.plugin.StampPicture(path, Date.now()); /* call: CAMERA.StampPicture */
    send('saved', { path, source: this.plugin });
  }

  onHangup() {
    this.plugin.StopPreview();
    this.plugin.Close();
  }
}

class Voice extends Part {
  onAnswer() {
    this.plugin.Open();
    this.plugin.SetNoiseGate(12); /* call: MICROPHONE.SetNoiseGate */
    this.plugin.StartCapture();
  }

  onMute({ value }) {
    this.plugin.SetGain(value ? 0 : 10);
    this.plugin.MuteCapture(value); /* call: MICROPHONE.MuteCapture */
  }

  onHangup() {
    this.plugin.StopCapture();
    this.plugin.Close();
  }
}

class Bell extends Part {
  onRing({ melody = 'ding' }) {
    this.plugin.PlayDoorbell(melody); /* call: AUDIO.PlayDoorbell */
    this.previous = this.plugin.GetVolume();
  }

  onAnswer() {
    this.plugin.StopDoorbell(); /* call: AUDIO.StopDoorbell */
    this.plugin.DuckOthers(80); /* call: AUDIO.DuckOthers */
  }

  onHangup() {
    this.plugin.SetVolume(this.previous);
    this.plugin.RestoreOthers(); /* call: AUDIO.RestoreOthers */
  }
}

const parts = [new Camera('cam'), new Voice('mic'), new Bell('snd')];

const states = {
  idle: { ring: 'ringing' },
  ringing: { answer: 'talking', hangup: 'idle' },
  talking: { hangup: 'idle', open: 'talking', snapshot: 'talking', mute: 'talking' },
};
let state = 'idle';

function request(action, detail) {
  const next = states[state][action];
  if (!next) return false;
  state = next;
  document.getElementById('state').textContent = state;
  send(action, detail);
  return true;
}

on('saved', ({ path, source }) => {
  document.title = path;
  source.UploadPicture(path, 'https://door.example/pictures'); /* call: CAMERA.UploadPicture */
});

on('open', () => {
  const [, , { plugin }] = parts;
  plugin.PlayRelayClick(); /* call: AUDIO.PlayRelayClick */
});

document.body.addEventListener('click', ({ target: { dataset } }) => {
  if (dataset && dataset.action) request(dataset.action, { ...dataset });
});

const byKey = { 13: 'answer', 27: 'hangup', 403: 'open', 404: 'snapshot', 405: 'mute' };
addEventListener('keydown', ({ keyCode }) => {
  if (keyCode === 32 || keyCode === 13) request('ring');
  if (byKey[keyCode]) request(byKey[keyCode], { value: 1 });
  if (keyCode === 406) new Test().onSnapshot();
});

// Tries the wiring without a door: it extends no part.
class Test {
  constructor() {
    this.plugin = new Proxy({}, { get: (_, name) => (...args) => console.log(name, args) });
  }

  onSnapshot() {
    this.plugin.StampPicture('test.jpg'); /* decoy */
    this.plugin.PlayDoorbell('test'); /* decoy */
  }
}

request('ring');
