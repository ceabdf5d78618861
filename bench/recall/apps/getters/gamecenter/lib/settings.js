class Settings {
  constructor() {
    this.values = { rumble: 0.6, invert: false, zone: 12 };
    this.listeners = [];
  }
  get rumble() { return this.values.rumble; }
  set rumble(level) {
    this.values.rumble = level;
    device.haptic.SetMasterLevel(level);                       /* call: HAPTIC.SetMasterLevel */
    this.listeners.forEach((listener) => listener('rumble', level));
  }
  get zone() { return this.values.zone; }
  set zone(pixels) {
    this.values.zone = pixels;
    device.gamepad.SetDeadZone(0, pixels);
    device.gamepad.SetTriggerZone(0, pixels);                  /* call: GAMEPAD.SetTriggerZone */
  }
  static get shared() {
    return this._shared || (this._shared = new Settings());
  }
}
