const display = document.querySelector('#picture-display');
const screenPlugin = document.querySelector('[id$=-screen]');
const form = document.forms.f;

const properties = [
  { name: 'brightness', min: 0, max: 100, value: 50 },
  { name: 'contrast', min: 0, max: 100, value: 50 },
  { name: 'sharpness', min: 0, max: 20, value: 10 },
  { name: 'saturation', min: 0, max: 100, value: 50 },
  { name: 'black-level', min: -5, max: 5, value: 0 },
  { name: 'tint', min: -50, max: 50, value: 0 },
];

const pascal = (name) => name.replace(/(^|-)(\w)/g, (all, dash, letter) => letter.toUpperCase());
const setter = (name) => `Set${pascal(name)}`;

function apply({ name, value }) {
  display[setter(name)](value);   /* call: DISPLAY.SetSharpness, DISPLAY.SetSaturation, DISPLAY.SetBlackLevel, DISPLAY.SetTint */
}

function field(property) {
  const label = document.createElement('label');
  label.textContent = property.name;
  const input = Object.assign(document.createElement('input'), {
    type: 'range', min: property.min, max: property.max, value: property.value, name: property.name,
  });
  input.addEventListener('change', () => {
    property.value = Number(input.value);
    apply(property);
  });
  label.append(input);
  return label;
}

form.append(...properties.map(field));
form.addEventListener('submit', (event) => event.preventDefault());

// The white point has three colours and two ends.
const colours = ['Red', 'Green', 'Blue'];
const ends = { gain: 'Gain', offset: 'Offset' };

class WhitePoint {
  constructor(plugin) {
    this.plugin = plugin;
  }

  set(end, values) {
    values.forEach((value, index) => {
      const method = `Set${colours[index]}${ends[end]}`;
      this.plugin[method](value);   /* call: DISPLAY.SetRedGain, DISPLAY.SetGreenGain, DISPLAY.SetBlueGain */
    });
  }

  reset() {
    for (const colour of colours) this.plugin[`Reset${colour}`]();   /* call: DISPLAY.ResetRed, DISPLAY.ResetGreen, DISPLAY.ResetBlue */
  }
}

const whitePoint = new WhitePoint(display);
const shifted = { 403: [52, 50, 48], 404: [48, 50, 52] };

const modes = { 405: 'Film', 406: 'Gaming' };
const actions = { 412: 'Freeze', 417: 'Unfreeze' };

addEventListener('keydown', ({ keyCode }) => {
  if (shifted[keyCode]) whitePoint.set('gain', shifted[keyCode]);
  if (keyCode === 413) whitePoint.reset();
  if (modes[keyCode]) {
    display.SetPictureMode(modes[keyCode].toLowerCase());
    screenPlugin[`Prepare${modes[keyCode]}Mode`]();   /* call: SCREEN.PrepareFilmMode, SCREEN.PrepareGamingMode */
  }
  if (keyCode in actions) {
    const { [keyCode]: name } = actions;
    screenPlugin[name + 'Frame']();   /* call: SCREEN.FreezeFrame, SCREEN.UnfreezeFrame */
  }
  if (keyCode === 457) {
    const preview = new WhitePoint({ SetRedGain() {}, SetGreenGain() {}, SetBlueGain() {} });
    preview.set('gain', [50, 50, 50]);   /* decoy */
    preview.plugin['Set' + 'RedGain'](50);   /* decoy */
  }
});

properties.forEach(apply);

const { [`Get${pascal('panel-hours')}`]: hours } = { GetPanelHours: () => display.GetPanelHours() };   /* call: DISPLAY.GetPanelHours */
document.title = `${hours()} h`;
