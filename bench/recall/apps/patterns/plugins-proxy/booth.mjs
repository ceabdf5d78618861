import tv, { statistics } from './tv.mjs';
import { FunnyShot, Shot } from './effects.mjs';

const booth = document.getElementById('booth');
const pictures = [];

class Observable {
  #observers = new Set();

  observe(f) {
    this.#observers.add(f);
    return () => this.#observers.delete(f);
  }

  notify(...args) {
    for (const f of this.#observers) f(...args);
  }
}

class Booth extends Observable {
  mode = 'normal';

  open() {
    tv.camera.Open();
    tv.camera.SetSelfTimer(3);   /* call: CAMERA.SetSelfTimer */
    tv.camera.StartPreview();
    return this;
  }

  shoot() {
    const shot = this.mode === 'funny' ? new FunnyShot() : new Shot();
    const { camera, audio } = tv;
    camera.SetFlashMode('auto');   /* call: CAMERA.SetFlashMode */
    audio.PlayShutter();   /* call: AUDIO.PlayShutter */
    const path = shot.take();
    pictures.push(path);
    this.notify(path);
  }

  expose() {
    const suggest = tv.lightsensor.SuggestExposure;
    return suggest('face');   /* call: LIGHTSENSOR.SuggestExposure */
  }
}

const party = new Booth().open();

party.observe((path) => {
  tv.imageviewer.ShowImage(path);
  tv.imageviewer.SetFrameStyle('polaroid');   /* call: IMAGEVIEWER.SetFrameStyle */
});
party.observe(() => {
  booth.textContent = `${pictures.length} pictures, ${Object.values(statistics).reduce((a, b) => a + b, 0)} calls`;
});

const keys = {
  13: () => party.shoot(),
  403: () => { party.mode = party.mode === 'funny' ? 'normal' : 'funny'; },
  404: () => party.expose(),
  415: () => party.shoot(),
  405: () => {
    // The guest book: no device, and no harm.
    const guestBook = new Proxy({}, { get: (t, name) => (text) => console.log(`${String(name)}: ${text}`) });
    guestBook.SetSelfTimer('later');   /* decoy */
    guestBook.PlayShutter('click');   /* decoy */
  },
};

addEventListener('keydown', ({ keyCode }) => keys[keyCode]?.());
