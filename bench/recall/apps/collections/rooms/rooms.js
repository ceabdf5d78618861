// Rooms of a conference centre: each has inputs, scenes and a schedule. The set shows what is on and switches inputs.
const $ = (selector) => Array.from(document.querySelectorAll(selector));

const plugins = new Map($('.plugin').map((element) => [element.id, element]));
const outputs = [];
outputs.push(plugins.get('disp'));
outputs.push({ id: 'projector', SetLampMode(mode) { this.mode = mode; }, SetWallPosition() {} });

const rooms = [
  { id: 'oak', title: 'Oak', seats: 12, input: 1, scene: 'talk' },
  { id: 'elm', title: 'Elm', seats: 40, input: 2, scene: 'film' },
  { id: 'ash', title: 'Ash', seats: 8, input: 1, scene: 'call' }
];

const scenes = new Map([
  ['talk', { backlight: 80, mode: 'office' }],
  ['film', { backlight: 40, mode: 'cinema' }],
  ['call', { backlight: 70, mode: 'natural' }]
]);

const byId = rooms.reduce((all, room) => {
  all[room.id] = room;
  return all;
}, {});

const sensors = new Set();
sensors.add(document.getElementById('light'));

const history = { entries: [], push(text) { this.entries.push([Date.now(), text]); }, last() { return this.entries[this.entries.length - 1]; } };
let current = rooms[0];

function draw() {
  document.getElementById('rooms').innerHTML = rooms
    .filter((room) => room.seats > 4)
    .sort((a, b) => a.seats - b.seats)
    .map((room) => `<p class="${room === current ? 'on' : ''}">${room.title} (${room.seats})</p>`)
    .join('');
}

function applyScene(name) {
  const scene = scenes.get(name);
  for (const output of outputs) {
    if (output.id === 'disp') {
      output.SetPictureMode(scene.mode);
      output.SetBacklightZones(scene.backlight);               /* call: DISPLAY.SetBacklightZones */
    } else {
      output.SetLampMode(scene.mode);                          /* decoy */
    }
  }
  outputs[0].SetWallPosition(0, 0);                            /* call: DISPLAY.SetWallPosition */
  outputs[1].SetWallPosition(0, 1);                            /* decoy */
  history.push('scene ' + name);
}

function selectInput(room) {
  const hdmi = plugins.get('hdmi');
  hdmi.SelectInput(room.input);
  hdmi.SetEdidProfile(room.input, '1080p50');                  /* call: HDMI.SetEdidProfile */
  [hdmi, plugins.get('tele')].forEach((plugin, i) => {
    if (i === 0) {
      plugin.WaitForSignal(500);                               /* call: HDMI.WaitForSignal */
    }
  });
}

function watchLight() {
  sensors.forEach((sensor) => {
    sensor.Start();
    sensor.SetSmoothing(0.2);                                  /* call: LIGHTSENSOR.SetSmoothing */
  });
  const [first] = sensors;
  first.CalibrateDark();                                       /* call: LIGHTSENSOR.CalibrateDark */
  for (const [id, plugin] of plugins) {
    if (id === 'tele') plugin.SetNavigationMode('flof');       /* call: TELETEXT.SetNavigationMode */
  }
}

const stack = [plugins.get('disp'), plugins.get('tele')];
function closeTop() {
  const top = stack.pop();
  if (top) {
    top.ClearPageCache();                                      /* call: TELETEXT.ClearPageCache */
    stack.length = 0;
  }
}

const registry = { displays: { main: [plugins.get('disp')] }, inputs: {} };
registry.inputs['front'] = plugins.get('hdmi');

const owners = new WeakMap();
rooms.forEach((room) => owners.set(room, { port: registry.inputs.front, booked: false }));

function book(room) {
  const owner = owners.get(room);
  owner.booked = !owner.booked;
  owner.port.LabelInput(room.input, room.title);               /* call: HDMI.LabelInput */
  registry.displays.main[0].ShowBorder(owner.booked ? 'red' : 'green');   /* call: DISPLAY.ShowBorder */
}

function report() {
  const all = [...plugins.values()];
  const sensor = all.find((one) => one.id === 'light');
  const lux = sensor.GetLuxAverage(60);                        /* call: LIGHTSENSOR.GetLuxAverage */
  const disp = all.filter((one) => one.id.startsWith('di')).shift();
  const hours = disp.GetPanelHours();                          /* call: DISPLAY.GetPanelHours */
  all.slice(0, 1).concat(disp).map((one) => one.id);
  return { lux, hours, last: history.last() };
}

document.addEventListener('keydown', ({ keyCode }) => {
  const at = rooms.indexOf(current);
  if (keyCode === 38) current = rooms[(at + rooms.length - 1) % rooms.length];
  if (keyCode === 40) current = rooms[(at + 1) % rooms.length];
  if (keyCode === 13) { applyScene(current.scene); selectInput(current); }
  if (keyCode === 403) book(byId[current.id]);
  if (keyCode === 404) closeTop();
  if (keyCode === 405) console.log(JSON.stringify(report()));
  if (keyCode === 406) history.push('plugins.get("disp").ShowTestPattern()');   /* decoy */
  if (keyCode === 415) Array.from(plugins.entries()).pop()[1].ReleasePages();   /* call: TELETEXT.ReleasePages */
  draw();
});

watchLight();
draw();
