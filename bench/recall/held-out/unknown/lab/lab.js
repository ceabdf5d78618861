// A console for engineers: calls any method of the tuner by its name.
const $ = (id) => document.getElementById(id);
const tuner = $('tuner'), display = $('display'), player = $('player');
const history = JSON.parse(localStorage.getItem('lab') || '[]');

const print = (...items) => { $('out').textContent += `${items.join(' ')}\n`; };

function parse(text) {
  try {
    return JSON.parse(`[${text}]`);
  } catch {
    return [text];
  }
}

function remember(method, args) {
  history.unshift({ method, args });
  localStorage.setItem('lab', JSON.stringify(history.slice(0, 20)));
}

$('go').addEventListener('click', () => {
  const method = $('method').value.trim();
  if (!method) return;
  const args = parse($('args').value);
  remember(method, args);
  print(method, tuner[method](...args));                /* undecidable: TUNER */
});

// Repeats what was entered in the last session.
function again(n) {
  const entry = history[n];
  if (entry) print('again', entry.method, Reflect.apply(tuner[entry.method], tuner, entry.args));     /* undecidable: TUNER */
}

// lab.html?display=SetX&value=3
const query = new URLSearchParams(location.search);
if (query.has('display')) {
  display[query.get('display')](Number(query.get('value')));        /* undecidable: DISPLAY */
}

// #player.Method in the address
window.addEventListener('hashchange', () => {
  const [, method] = /^#player\.(\w+)$/.exec(location.hash) || [];
  if (method) player[method]();                         /* undecidable: PLAYER */
});

const ask = () => {
  const name = window.prompt('Property of the display');
  if (name) print(name, display[`Get${name}`]());       /* undecidable: DISPLAY */
};

// Ready-made measurements
const MEASUREMENTS = {
  ber: ['GetBitErrorRate', 1000],                       /* call: TUNER.GetBitErrorRate */
  mer: ['GetModulationError', 1000],                    /* call: TUNER.GetModulationError */
  agc: ['GetAgcLevel'],                                 /* call: TUNER.GetAgcLevel */
  level: ['GetSignalLevel'],
};

function fillQuick() {
  for (const name of Object.keys(MEASUREMENTS)) {
    const option = document.createElement('option');
    option.value = option.textContent = name;
    $('quick').appendChild(option);
  }
}

function measure(name) {
  const [method, ...args] = MEASUREMENTS[name] ?? [];
  if (method) print(name, tuner[method](...args));      /* also: TUNER.GetBitErrorRate, TUNER.GetModulationError, TUNER.GetAgcLevel */
}

// Stand-ins while there is no signal
const simulator = {
  GetBitErrorRate: () => 1e-6,
  DumpRegisters: () => [1, 2, 3],
};

const script = {
  async run(url) {
    const response = await fetch(url);
    for (const line of (await response.text()).split('\n')) {
      const [method, value] = line.split(' ');
      tuner[method]?.(value);                           /* undecidable: TUNER */
    }
  },
};

document.addEventListener('keydown', async ({ keyCode }) => {
  switch (keyCode) {
    case 403: Object.keys(MEASUREMENTS).forEach(measure); break;
    case 404: print(tuner.DumpRegisters(0, 64)); break;               /* call: TUNER.DumpRegisters */
    case 405: display.ShowVectorScope(true); break;                   /* call: DISPLAY.ShowVectorScope */
    case 406: player.EnableDebugOverlay('buffer'); break;             /* call: PLAYER.EnableDebugOverlay */
    case 457: print(simulator.GetBitErrorRate(), simulator.DumpRegisters()); break;     /* decoy */
    case 412: again(0); break;
    case 417: ask(); break;
    case 19: await script.run('https://lab.example/script.txt').catch(() => print('no script')); break;
    case 461: print('tuner.WriteRegister(addr, value) is locked'); break;     /* decoy */
  }
});

window.onmessage = ({ data }) => {
  if (data && data.lab) display[data.lab](...(data.args || []));      /* undecidable: DISPLAY */
};
fillQuick();
display.SetWaveformSource('tuner');                     /* call: DISPLAY.SetWaveformSource */
