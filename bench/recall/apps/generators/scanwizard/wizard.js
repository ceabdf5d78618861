'use strict';

const scan = document.getElementById('scan');
const tuner = document.getElementById('tuner');
const channel = document.getElementById('channel');
const table = new ServiceTable();
const past = new History();

const page = {
  node: document.getElementById('page'),
  Title(text) { this.node.dataset.title = text; },
  Step(n) { this.node.dataset.step = n; },
  Confirm() { return true; },
};

/** The steps of the wizard. What is yielded is [whom to ask, what]. */
function* steps() {
  page.Title('Where are you?');                                                 /* decoy */
  const device = yield ['device', 'tuner'];
  device.SetSource('cable');
  device.SetAntennaPower(false);                                                /* call: TUNER.SetAntennaPower */

  page.Title('Ready?');                                                         /* decoy */
  const dialog = yield ['view', 'confirm'];
  if (dialog.Confirm()) {                                                       /* decoy */
    const searcher = yield ['device', 'scan'];
    searcher.Start();
    searcher.SetDepth('full');                                                  /* call: TUNERSCAN.SetDepth */
    searcher.Step(4);                                                           /* call: TUNERSCAN.Step */
  }

  const view = yield ['view', 'progress'];
  view.Step(3);                                                                 /* decoy */
  return view;
}

const devices = { tuner, scan };
const views = { confirm: page, progress: page };

function run(iterator) {
  let { value, done } = iterator.next();
  while (!done) {
    const [who, name] = value;
    ({ value, done } = iterator.next(who === 'device' ? devices[name] : views[name]));
  }
  value.Title('Done');                                                          /* decoy */
}

function* frequencies(from, to, step) {
  for (let f = from; f < to; f += step) yield f;
}

/** All that hear of the end of the scan: each says whether it is of the set. */
function* listeners() {
  yield { native: true, object: channel };
  yield { native: false, object: table };
  yield { native: false, object: new ServiceTable() };
}

function finish() {
  for (const { native, object } of listeners()) {
    if (native) object.ReloadTable();                                           /* call: CHANNEL.ReloadTable */
    else object.SortRows();                                                     /* decoy */
  }
  scan.SaveResults();
}

function coarse() {
  for (const frequency of frequencies(474, 490, 8)) {
    tuner.SetFrequency(frequency);
    tuner.AwaitLock(50);                                                        /* call: TUNER.AwaitLock */
    table.RestoreRows([`service ${frequency}`]);                                /* decoy */
  }
}

const keys = new Map([
  [13, () => run(steps())],
  [38, () => past.Perform(new SortCommand(table))],                             /* decoy */
  [40, () => past.Perform(new SkipCommand(scan)).Perform(new HideCommand(table, 'two'))],     /* decoy */
  [33, () => past.Perform(new MoveCommand(channel))],                           /* decoy */
  [8, () => { for (const { length } of [[...past]]) for (let i = 0; i < length; i++) past.Revert(); }],      /* decoy */
  [403, coarse],
  [404, finish],
  [405, () => { channel.HideRow(3); table.HideRow('three'); }],                 /* call: CHANNEL.HideRow */
  [406, () => table.FlushRows()],                                               /* decoy */
  [27, () => { scan.Revert('factory'); }],                                      /* call: TUNERSCAN.Revert */
]);
addEventListener('keydown', ({ keyCode }) => keys.get(keyCode)?.());
