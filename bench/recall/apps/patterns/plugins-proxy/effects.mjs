import { node } from './tv.mjs';

/** Camera effects: each adds one to what is given. */
export const withMirror = (Base) => class extends Base {
  prepare() {
    super.prepare();
    this.plugin.SetMirror(true);   /* call: CAMERA.SetMirror */
  }
};

export const withFilter = (filter) => (Base) => class extends Base {
  prepare() {
    super.prepare();
    this.plugin.SetColorFilter(filter);   /* call: CAMERA.SetColorFilter */
  }
};

export class Shot {
  constructor() {
    this.plugin = node('camera');
  }

  prepare() {
    this.plugin.SetResolution('1920x1080');
  }

  take() {
    this.prepare();
    return this.plugin.TakePicture();
  }
}

export const FunnyShot = [withMirror, withFilter('comic')].reduce((Base, mixin) => mixin(Base), Shot);
