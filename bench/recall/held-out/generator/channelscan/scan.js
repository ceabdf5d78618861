const reducer = (state = { text: '', found: 0, progress: 0 }, action) => {
  switch (action.type) {
    case 'STEP': return { ...state, text: action.text };
    case 'FOUND': return { ...state, found: state.found + action.count, progress: state.progress + 7 };
    default: return state;
  }
};

const runner = createRunner(reducer, ({ text, progress }) => {
  document.getElementById('step').textContent = text;
  document.getElementById('bar').value = progress;
});

// A simulated tuner for the demonstration in shops.
const demo = {
  MeasureSnr(f) { return 20 + (f % 7); },
  AddTransponder(f) { this.list = [...(this.list || []), f]; },
};

function* demonstration() {
  for (const f of [474, 482]) {
    demo.MeasureSnr(f);                                   /* decoy */
    demo.AddTransponder(f);                               /* decoy */
    yield effects.wait(5);
  }
}

function* plugIns() {
  yield scan;
  yield tuner;
}

document.addEventListener('keydown', ({ keyCode }) => {
  switch (keyCode) {
    case 13: runner.run(root()); break;
    case 403: runner.run(demonstration()); break;
    case 413: runner.run((function* () { yield call(scan, 'AbortNow'); }())); break;      /* call: TUNERSCAN.AbortNow */
    case 457:
      for (const plugin of plugIns()) plugin.DumpState();                                 /* call: TUNERSCAN.DumpState */
      break;
    case 461: {
      const [, second] = plugIns();
      second.PowerDownDemodulator();                      /* call: TUNER.PowerDownDemodulator */
      break;
    }
  }
});
console.log('Press OK; scan.StartBlind() is for engineers');    /* decoy */
