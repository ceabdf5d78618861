const byId = (id) => document.getElementById(id);
export const pad = byId('pad');
export const rumble = byId('rumble');
export function withScreen(fn) { return fn(byId('screen')); }

export class Pad {
  constructor(index) { this.index = index; }
  open() {
    pad.Open();
    pad.SetDeadZone(0.2);
    pad.EnableTurbo(this.index, true);      /* call: GAMEPAD.EnableTurbo */
    pad.SetLightBar(this.index, '#00f');    /* call: GAMEPAD.SetLightBar */
    return this;
  }
  poll() {
    const direction = pad.GetDpad(this.index);    /* call: GAMEPAD.GetDpad */
    return { left: direction === 4, right: direction === 6, turn: pad.GetButtonState(this.index, 0) === 2 };
  }
}
