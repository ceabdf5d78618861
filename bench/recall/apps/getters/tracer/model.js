'use strict';

/** A headset as the page sees it. The getters ask; the setters tell the headset's own object. */
class Headset {
  _volume = 5;
  constructor(name) { this.name = name; }
  get volume() { return this._volume; }
  set volume(value) {
    this._volume = value;
    this.Notify('volume');                                                  /* decoy */
  }
  Notify(what) { this.last = what; }
  SetVisible(on) { this.visible = on; }
  ReadBattery() { return 80; }
  SwitchCodec(name) { this.codec = name; return this; }
}

class Link {
  static #shared;
  static get shared() { return (Link.#shared ??= new Link(traced('bluetooth', document.getElementById('bt')))); }
  constructor(device) { this.device = device; }
  get device_() { return this.device; }
  get headsets() { return (this.known ??= [new Headset('left'), traced('right', new Headset('right'))]); }
  set mode(value) { document.getElementById('bt').SetLinkMode(value); }     /* call: BLUETOOTH.SetLinkMode */
}

const meter = {
  get device() { return document.getElementById('bw'); },
  get fake() { return silent; },
  get speed() { return this.device.GetBurstRate(); },                       /* call: BANDWIDTH.GetBurstRate */
  get guess() { return this.fake.GetBurstEstimate(); },                     /* decoy */
};
