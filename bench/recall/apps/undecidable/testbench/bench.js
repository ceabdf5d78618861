'use strict';

const bench = {
  results: [],
  plugin: (name) => document.getElementById(name),
  report(name, value) {
    this.results.push([name, value]);
    const row = document.getElementById('results').insertRow();
    row.insertCell().textContent = name;
    row.insertCell().textContent = String(value);
  },
};

// ---- calls by hand ------------------------------------------------------------------------------------------------
const call = document.forms.call;
call.addEventListener('submit', (event) => {
  event.preventDefault();
  const { method, args } = call.elements;
  const player = bench.plugin('PLAYER');
  if (!method.value) return;
  bench.report(method.value, player[method.value](...args.value.split(',')));   /* undecidable: PLAYER */
});

document.forms.extension.addEventListener('submit', (event) => {
  event.preventDefault();
  const command = new FormData(event.target).get('command');
  if (command) bench.report(command, bench.plugin('KOB').Execute(command));   /* undecidable: KOB */
});

// ---- what is known to be there: from the package ------------------------------------------------------------------
const known = fetch('known.json').then((reply) => reply.json());

known.then((table) => {
  for (const [name, methods] of Object.entries(table)) {
    for (const method of methods) {
      const option = document.createElement('option');
      option.value = method;
      document.getElementById('known').append(option);
      bench.report(method, bench.plugin(name)[method]());   /* call: PLAYER.GetDecoderName, GAMEPAD.GetPadSerial, HDMI.GetEdid */
    }
  }
});

// ---- repeats of what was last done, and links of the wiki -------------------------------------------------------------
const last = localStorage.getItem('bench.last');
if (last) bench.report(last, bench.plugin('HDMI')[last]());   /* undecidable: HDMI */

const query = new URLSearchParams(location.search);
if (query.has('hdmi')) bench.plugin('HDMI')[query.get('hdmi')](1);   /* undecidable: HDMI */

window.addEventListener('hashchange', () => {
  const [, method] = location.hash.split('/');
  if (method) bench.plugin('GAMEPAD')[method]();   /* undecidable: GAMEPAD */
});

window.addEventListener('message', ({ data, origin }) => {
  if (origin.endsWith('.example') && data.run) {
    const pad = bench.plugin('GAMEPAD');
    pad[`Get${data.run}`]();   /* undecidable: GAMEPAD */
  }
});

// ---- stress test: names from the server of the laboratory -----------------------------------------------------------
async function stress() {
  const hdmi = bench.plugin('HDMI');
  hdmi.SetLinkTraining('slow');   /* call: HDMI.SetLinkTraining */
  try {
    const reply = await fetch('https://lab.example/hdmi/sequence');
    for (const line of (await reply.text()).split('\n')) {
      hdmi[line.trim()]();   /* undecidable: HDMI */
    }
  } catch {
    hdmi.InjectHotplug();   /* call: HDMI.InjectHotplug */
  }
}

const source = 'EventSource' in window ? new EventSource('https://lab.example/events') : null;
if (source) {
  source.addEventListener('play', (event) => {
    bench.plugin('PLAYER')[event.data]();   /* undecidable: PLAYER */
  });
}

const asked = () => {
  const name = window.prompt('Method of the pad?');
  return name ? bench.plugin('GAMEPAD')[name]() : 'nothing';   /* undecidable: GAMEPAD */
};

const stub = { SetLinkTraining: () => 'stub', InjectHotplug() { return 'stub'; } };

document.addEventListener('keydown', ({ keyCode }) => {
  if (keyCode === 403) stress();
  if (keyCode === 404) bench.report('prompt', asked());
  if (keyCode === 405) bench.report('stub', stub.SetLinkTraining() + stub.InjectHotplug());   /* decoy */
  if (keyCode === 406) bench.plugin('GAMEPAD').RunSelfTest();   /* call: GAMEPAD.RunSelfTest */
  if (keyCode === 457) bench.plugin('PLAYER').DumpPipeline('bench');   /* call: PLAYER.DumpPipeline */
});
