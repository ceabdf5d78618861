const { call, wait, put, select, fork } = effects;
const scan = document.querySelector('#scan');
const tuner = document.querySelector('#tuner');
const broadcast = document.getElementById('broadcast');

const BANDS = [{ name: 'VHF', from: 174, to: 230 }, { name: 'UHF', from: 470, to: 690 }];

function* frequencies({ from, to }, width = 64) {
  for (let f = from; f < to; f += width) {
    const lock = yield f;
    if (lock === 'skip') return;
  }
}

function* prepare() {
  yield put({ type: 'STEP', text: 'Preparing' });
  yield call(tuner, 'SetSource', 'air');
  yield call(tuner, 'EnableLnbPower', false);             /* call: TUNER.EnableLnbPower */
  yield call(scan, 'SetSymbolRate', 6875);                /* call: TUNERSCAN.SetSymbolRate */
  tuner.CalibrateFrontEnd();                              /* call: TUNER.CalibrateFrontEnd */
}

function* scanBand(band) {
  yield put({ type: 'STEP', text: band.name });
  scan.SetScanRange(band.from, band.to);
  for (const f of frequencies(band)) {
    tuner.SetFrequency(f);
    tuner.MeasureSnr(f);                                  /* call: TUNER.MeasureSnr */
    const quality = tuner.GetSignalQuality();
    if (quality > 0) {
      scan.AddTransponder(f);                             /* call: TUNERSCAN.AddTransponder */
      yield put({ type: 'FOUND', count: scan.GetFoundCount() });
    }
    yield wait(1);
  }
  const plugins = yield* lookUp();
  plugins.broadcast.ParseSiTables(band.name);             /* call: BROADCAST.ParseSiTables */
}

function* lookUp() {
  yield wait(0);
  return { broadcast, tuner };
}

function* finish() {
  const { found } = yield select((s) => s);
  if (found > 0) {
    scan.SaveResults();
    scan.SortByLcn();                                     /* call: TUNERSCAN.SortByLcn */
    broadcast.RebuildServiceList();                       /* call: BROADCAST.RebuildServiceList */
  }
  yield put({ type: 'STEP', text: `${found} found` });
}

function* root() {
  yield* prepare();
  for (const band of BANDS) yield* scanBand(band);
  yield fork(finish());
}
