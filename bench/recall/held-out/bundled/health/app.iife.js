var HealthApp = (function (exports) {
  'use strict';

  const $ = (id) => document.getElementById(id);

  function createStore(initial) {
    let state = initial;
    const listeners = new Set();
    return {
      get: () => state,
      set(patch) {
        state = { ...state, ...patch };
        listeners.forEach((fn) => fn(state));
      },
      subscribe(fn) {
        listeners.add(fn);
        return () => listeners.delete(fn);
      }
    };
  }

  const clamp = (v, lo, hi) => Math.min(hi, Math.max(lo, v));

  class Ring {
    constructor(size) {
      this.values = [];
      this.size = size;
    }
    push(v) {
      this.values.push(v);
      if (this.values.length > this.size) this.values.shift();
    }
    get mean() {
      return this.values.reduce((a, b) => a + b, 0) / (this.values.length || 1);
    }
  }

  const motion$1 = $('motion');
  const samples = new Ring(10);

  function startSensor(onStep) {
    motion$1.Start();
    motion$1.SetSampleWindow(64);                       /* call: MOTION.SetSampleWindow */
    motion$1.EnableStepCounter(true);                   /* call: MOTION.EnableStepCounter */
    const sample = () => {
      samples.push(motion$1.GetAcceleration());
      if (samples.mean > 0.5) onStep(motion$1.GetStepCount());      /* call: MOTION.GetStepCount */
    };
    sample();
    return setInterval(sample, 50);
  }

  const calibrate = () => {
    motion$1.Calibrate();
    motion$1.ZeroDrift();                               /* call: MOTION.ZeroDrift */
  };

  var sensor = /*#__PURE__*/Object.freeze({
    __proto__: null,
    calibrate: calibrate,
    motion: motion$1,
    startSensor: startSensor
  });

  const patterns = { step: [20], goal: [50, 30, 50], warn: [200] };

  const buzz = (() => {
    const { haptic } = { haptic: $('haptic') };
    return (name, strength = 1) => {
      const pattern = patterns[name] || [];
      haptic.SetIntensity(clamp(strength, 0, 1));
      haptic.PlayPattern(pattern.join(','));            /* call: HAPTIC.PlayPattern */
      if (name === 'goal') {
        haptic.QueueEffect('applause');                 /* call: HAPTIC.QueueEffect */
      }
    };
  })();

  // A second "motion" of another module: the animation of the figure.
  const motion = {
    frame: 0,
    ZeroDrift() { this.frame = 0; },
    GetStepCount() { return this.frame; }
  };

  const store = createStore({ steps: 0, goal: 2, exercise: 'squats' });
  const exercises = ['squats', 'jumps', 'stretch'];

  function view({ steps, goal, exercise }) {
    motion.frame = steps;
    $('app').innerHTML = `<h1>${exercise}</h1><p>${motion.GetStepCount()} of ${goal}</p>`;    /* decoy */
  }

  store.subscribe(view);
  let announced = false;
  store.subscribe(({ steps, goal }) => {
    if (!announced && steps >= goal) {
      announced = true;
      buzz('goal');
    }
  });

  let timer;
  const start = () => {
    clearInterval(timer);
    calibrate();
    timer = startSensor((n) => {
      store.set({ steps: store.get().steps + n });
      buzz('step', 0.2);
    });
  };

  function next(by) {
    const { exercise } = store.get();
    const i = exercises.indexOf(exercise);
    store.set({ exercise: exercises[(i + by + exercises.length) % exercises.length] });
    sensor.motion.LoadGestureSet(store.get().exercise);     /* call: MOTION.LoadGestureSet */
    motion.ZeroDrift();                                     /* decoy */
  }

  function stop() {
    clearInterval(timer);
    const plugins = [sensor.motion, $('haptic')];
    plugins.forEach((p) => p.Stop());
    const [first, second] = plugins;
    first.FlushSamples();                               /* call: MOTION.FlushSamples */
    second.CoolDown();                                  /* call: HAPTIC.CoolDown */
  }

  const keymap = new Map([[13, start], [37, () => next(-1)], [39, () => next(1)]]);
  addEventListener('keydown', (e) => keymap.get(e.keyCode)?.());
  addEventListener('pagehide', stop);
  /* motion.EnableFallDetection(true) waits for the next firmware */ /* decoy */
  view(store.get());

  exports.start = start;
  exports.stop = stop;
  return exports;

})({});
