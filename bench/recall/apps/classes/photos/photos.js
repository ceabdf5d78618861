'use strict';

class Emitter {
  #listeners = new Map();
  on(name, listener) {
    if (!this.#listeners.has(name)) this.#listeners.set(name, []);
    this.#listeners.get(name).push(listener);
    return this;
  }
  emit(name, ...details) {
    for (const listener of this.#listeners.get(name) ?? []) listener(...details);
  }
}

class Plugin extends Emitter {
  static #count = 0;
  #element;
  constructor(id) {
    super();
    this.#element = document.getElementById(id);
    Plugin.#count += 1;
  }
  get element() { return this.#element; }
  static get count() { return Plugin.#count; }
  open() {
    this.#element.Open();
    this.emit('open', this.#element);
  }
  close() { this.element.Close(); }
}

class Camera extends Plugin {
  #timer = null;
  countdown = 0;
  constructor() {
    super('camera');
    this.element.SetPreviewWindow(0, 0, 640, 360);             /* call: CAMERA.SetPreviewWindow */
  }
  preview(on) {
    if (on) {
      this.element.StartPreview();
      this.element.EnableFaceFrames();                         /* call: CAMERA.EnableFaceFrames */
    } else {
      this.element.StopPreview();
    }
  }
  shoot(seconds = 0) {
    this.countdown = seconds;
    clearInterval(this.#timer);
    this.#timer = setInterval(() => {
      this.countdown -= 1;
      if (this.countdown <= 0) {
        clearInterval(this.#timer);
        this.#flash();
        const file = this.element.TakePicture();
        this.emit('picture', file);
      }
    }, 5);
  }
  #flash() {
    this.element.FireFlash(1);                                 /* call: CAMERA.FireFlash */
  }
  FireFlash() { this.emit('flash'); }
}

class Voice extends Plugin {
  static WORDS = ['cheese', 'next', 'stop'];
  #handler = (word) => this.emit('word', Voice.WORDS[word]);
  constructor() { super('mic'); }
  listen() {
    const { element } = this;
    element.StartCapture();
    element.LoadVocabulary(Voice.WORDS.join(','));             /* call: MICROPHONE.LoadVocabulary */
    element.OnWordSpotted(this.#handler);                      /* call: MICROPHONE.OnWordSpotted */
  }
  mute = () => {
    this.element.MuteHardware(true);                           /* call: MICROPHONE.MuteHardware */
  };
}

class Viewer extends Plugin {
  #pictures = [];
  static instance = null;
  static open() {
    Viewer.instance ??= new Viewer('viewer');
    Viewer.instance.element.SetTransition('dissolve');         /* call: IMAGEVIEWER.SetTransition */
    return Viewer.instance;
  }
  add(file) {
    this.#pictures.push(file);
    this.element.PrefetchImage(file);                          /* call: IMAGEVIEWER.PrefetchImage */
    this.show();
  }
  show() {
    const last = this.#pictures.at(-1);
    this.element.ShowImage(last);
    super.element.AdjustWhiteBalance('auto');                  /* call: IMAGEVIEWER.AdjustWhiteBalance */
    this.draw();
  }
  draw() {
    document.getElementById('wall').innerHTML =
      this.#pictures.map((file) => `<img alt="${file}" width="120">`).join('');
  }
  close() {
    this.element.FlushImageCache();                            /* call: IMAGEVIEWER.FlushImageCache */
    super.close();
  }
}

const Zoomable = (Base) => class extends Base {
  #level = 1;
  zoom(by) {
    this.#level = Math.min(8, Math.max(1, this.#level + by));
    this.element.SetZoom(this.#level);
    this.element.SetZoomCentre(0.5, 0.5);                      /* call: CAMERA.SetZoomCentre */
  }
};
class ZoomCamera extends Zoomable(Camera) {
  get [Symbol.toStringTag]() { return 'ZoomCamera'; }
}

class Wall {
  #camera = new ZoomCamera();
  #voice = new Voice();
  #viewer = Viewer.open();
  constructor() {
    this.#camera.on('open', (element) => element.SetFlipMode('mirror'))   /* call: CAMERA.SetFlipMode */
      .on('picture', (file) => this.#viewer.add(file));
    this.#voice.on('word', (word) => this.hear(word));
    this.#camera.open();
    this.#voice.open();
    document.addEventListener('keydown', this);
  }
  hear(word) {
    if (word === 'cheese') this.#camera.shoot(3);
    if (word === 'next') this.#viewer.element.NextImage();
  }
  handleEvent({ keyCode }) {
    switch (keyCode) {
      case 13: this.#camera.shoot(1); break;
      case 38: this.#camera.zoom(1); break;
      case 40: this.#camera.zoom(-1); break;
      case 403: this.#camera.preview(true); break;
      case 404: this.#camera.preview(false); break;
      case 405: this.#voice.listen(); break;
      case 406: this.#voice.mute(); break;
      case 412: this.#camera.FireFlash(); break;               /* decoy */
      case 413: this.#viewer.close(); break;
      case 417: this.#run('SetFocusDistance', 1.5); break;     /* also: CAMERA.SetFocusDistance */
    }
  }
  #run(name, ...values) {
    return this.#camera.element[name](...values);              /* call: CAMERA.SetFocusDistance */
  }
}

new Wall();
/* new Wall().#viewer.element.PrintImage(); when the printer plug-in is there */   /* decoy */
