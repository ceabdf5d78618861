const state = document.getElementById('state');
const found = document.getElementById('found');

const bands = [
  { name: 'VHF', from: 177500, to: 226500, step: 7000 },
  { name: 'UHF', from: 474000, to: 522000, step: 8000 },
];

function* frequencies() {
  for (const band of bands) {
    for (const khz of range(band.from, band.to, band.step)) yield { band: band.name, khz };
  }
}

// All that is done at a frequency, one after the other: [plug-in, what].
function* plugins() {
  yield document.getElementById('scan');
  yield document.getElementById('tuner');
  yield document.getElementById('channels');
}

const [scanner, tuner, channels] = plugins();

function* measure({ band, khz }) {
  tuner.SetFrequency(khz);
  tuner.SetModulation(band === 'UHF' ? 'qam64' : 'qam16');   /* call: TUNER.SetModulation */
  yield sleep(1);
  const level = tuner.GetSignalLevel();
  const ber = tuner.GetBitErrorRate();   /* call: TUNER.GetBitErrorRate */
  return { khz, good: level > 0 && ber < 10 };
}

function* scanAll() {
  scanner.SetScanMode('manual');   /* call: TUNERSCAN.SetScanMode */
  const results = [];
  for (const frequency of take(frequencies(), 4)) {
    state.textContent = `${frequency.band} ${frequency.khz / 1000} MHz`;
    const result = yield* measure(frequency);
    if (result.good) {
      results.push(result);
      scanner.AddTransponder(result.khz);   /* call: TUNERSCAN.AddTransponder */
    }
  }
  return results;
}

function* report(results) {
  for (const text of map(results, (r) => `${r.khz} kHz`)) {
    const item = document.createElement('li');
    item.textContent = text;
    yield found.appendChild(item);
  }
}

spawn(function* main() {
  const results = yield* scanAll();
  for (const item of report(results)) item.className = 'new';
  scanner.SaveResults();
  channels.RenumberChannels('lcn');   /* call: CHANNEL.RenumberChannels */
  try {
    yield Promise.reject(new Error('no network'));
  } catch (error) {
    channels.UseFactoryList(error.message);   /* call: CHANNEL.UseFactoryList */
  }
  return results.length;
}).then((count) => {
  state.textContent = `${count} found`;
  scanner.FinalizeScan(count);   /* call: TUNERSCAN.FinalizeScan */
});

// The steps of the wizard that the viewer walks through with OK.
const wizard = (function* () {
  const country = yield 'Choose your country';
  tuner.SetCountryPlan(country);   /* call: TUNER.SetCountryPlan */
  const antenna = yield 'Choose your antenna';
  tuner.SetAntennaPower(antenna === 'active');   /* call: TUNER.SetAntennaPower */
  yield 'Searching…';
  const self = channels;
  self.SortByNetwork();   /* call: CHANNEL.SortByNetwork */
  return 'Done';
})();

const answers = ['de', 'de', 'active', 'ok', 'ok'][Symbol.iterator]();

document.addEventListener('keydown', (event) => {
  if (event.keyCode === 13 || event.keyCode === 39) {
    const { value, done } = wizard.next(answers.next().value);
    if (!done) state.textContent = value;
  }
});

class Favourites {
  constructor(plugin, ids) {
    this.plugin = plugin;
    this.ids = ids;
  }

  * [Symbol.iterator]() {
    for (const id of this.ids) yield [id, this.plugin];
  }
}

for (const [id, plugin] of new Favourites(channels, [1, 5, 9])) {
  plugin.GetChannel(id);
  plugin.PinChannel(id);   /* call: CHANNEL.PinChannel */
}

const [...steps] = (function* () {
  yield 'LockTuner';
  yield 'UnlockTuner';
})();
steps.forEach((name) => tuner[name]('scan'));   /* call: TUNER.LockTuner, TUNER.UnlockTuner */

/* A transponder that is found by hand: scanner.AddTransponder(474000). */ /* decoy */
const dry = (function* () { yield { PinChannel() {}, AddTransponder() {} }; })();
dry.next().value.PinChannel(3);   /* decoy */
