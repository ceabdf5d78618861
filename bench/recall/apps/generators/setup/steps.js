const get = (id) => document.getElementById(id);
const SOURCES = { Cable: 'DVB-C', Antenna: 'DVB-T2', Dish: 'DVB-S2' };

function* sourceStep(tuner) {
  const source = yield { title: 'How is the set connected?', choices: Object.keys(SOURCES) };
  tuner.SetSource(SOURCES[source] || 'DVB-C');
  tuner.PowerAntenna(source === 'Antenna');                    /* call: TUNER.PowerAntenna */
  if (source === 'Dish') {
    yield* dishStep(tuner);
  }
  return source;
}

function* dishStep(tuner) {
  const satellite = yield { title: 'Which satellite?', choices: ['19.2 E', '13.0 E', '28.2 E'] };
  tuner.SelectSatellite(satellite);                            /* call: TUNER.SelectSatellite */
}

function* ranges() {
  yield [47, 68];
  yield [174, 230];
  yield [470, 694];
}

function* scanStep() {
  const scan = get('scan');
  const networkId = scan.GetNetworkId();                       /* call: TUNERSCAN.GetNetworkId */
  yield { title: 'Search in network ' + networkId + '?', choices: ['Search', 'Later'] };
  let part = 0;
  for (const [from, to] of ranges()) {
    scan.SetScanRange(from, to);
    scan.SetScanPriority('hd');                                /* call: TUNERSCAN.SetScanPriority */
    scan.Start();
    get('bar').value = ++part * 33;
  }
  return scan;
}

// Services are not read into one array: there may be thousands of them.
function* services(bc) {
  bc.RewindServiceCursor();                                    /* call: BROADCAST.RewindServiceCursor */
  for (let i = 0; i < 4; ++i) {
    yield { name: 'Service ' + i, plugin: bc, hidden: i === 3 };
  }
}

const Lazy = {
  *filter(items, test) { for (const item of items) if (test(item)) yield item; },
  *map(items, make) { for (const item of items) yield make(item); },
  *take(items, count) {
    let left = count;
    for (const item of items) {
      if (left-- <= 0) return;
      yield item;
    }
  }
};

function* sortStep() {
  const order = yield { title: 'Sort channels?', choices: ['By number', 'By name'] };
  const visible = Lazy.filter(services(get('bc')), (service) => !service.hidden);
  let count = 0;
  for (const service of Lazy.take(visible, 2)) {
    service.plugin.RenumberService(++count, order);            /* call: BROADCAST.RenumberService */
    get('found').insertAdjacentHTML('beforeend', `<li>${service.name}</li>`);
  }
  for (const plugin of Lazy.map(services(get('bc')), (service) => service.plugin)) {
    plugin.CommitServiceOrder();                               /* call: BROADCAST.CommitServiceOrder */
    break;
  }
  return count;
}

function* installation() {
  const tuner = get('tuner');
  try {
    yield* sourceStep(tuner);
    const scan = yield* scanStep();
    scan.SaveResults();
    scan.CreateBackup('first');                                /* call: TUNERSCAN.CreateBackup */
    return yield* sortStep();
  } finally {
    tuner.ReleaseFrontend();                                   /* call: TUNER.ReleaseFrontend */
  }
}

// The demo of shops goes through without anybody.
const demo = {
  *[Symbol.iterator]() {
    yield get('tuner');
    yield { EnterShopMode() {}, id: 'none' };
  },
  EnterShopMode() { return true; }
};
const [first, second] = demo;
first.EnterShopMode('loop');                                   /* call: TUNER.EnterShopMode */
second.EnterShopMode('loop');                                  /* decoy */
demo.EnterShopMode();                                          /* decoy */
Wizard.auto(installation());

window.addEventListener('keydown', (event) => {
  if (event.keyCode === 403) {
    Wizard.start(installation());
  }
  if (event.keyCode === 404) {
    Wizard.auto((function* (scan) {
      yield scan;
      scan.DiscardResults();                                   /* call: TUNERSCAN.DiscardResults */
    }(get('scan'))));
  }
  if (event.keyCode === 405) {
    const dish = dishStep(get('tuner'));
    dish.next();
    dish.next('13.0 E');
  }
});
