'use strict';

const byId = (id) => document.getElementById(id);

/* Real and computed ones stand in one table: kind tells them apart. */
const sensors = [
  { kind: 'real', name: 'light', source: byId('light') },
  { kind: 'real', name: 'motion', source: byId('motion') },
  { kind: 'virtual', name: 'time', source: new TimeOfDay() },
  { kind: 'virtual', name: 'comfort', source: new VirtualSensor('comfort', () => 7) },
];

function prepare(sensor) {
  if (sensor.kind === 'real') {
    sensor.source.Start();
    sensor.source.SetPowerBudget(5);                                        /* call: LIGHTSENSOR.SetPowerBudget */
  } else {
    sensor.source.Smooth(0.5);                                              /* decoy */
  }
}

function measure({ kind, name, source }) {
  switch (kind) {
    case 'virtual':
      return [name, source.Sample(), source.Average()];                     /* decoy */
    case 'real':
      return [name, source.ReadRaw(), 0];                                   /* call: LIGHTSENSOR.ReadRaw */
    default:
      return [name, NaN, NaN];
  }
}

const registry = new Map(sensors.map((sensor) => [sensor.name, sensor.source]));
const calibrations = new WeakMap();
calibrations.set(registry.get('light'), { offset: 3 });
calibrations.set(registry.get('time'), { offset: 0 });

function offsetOf(source) {
  return (calibrations.get(source) || { offset: 0 }).offset;
}

function paint() {
  byId('readings').innerHTML = sensors.map(measure)
    .map(([name, value, average]) => `<li>${name}: ${value} (${average}) ${offsetOf(registry.get(name))}</li>`).join('');
}

/* The microphone is shared: who asks for it gets a lease, and gives it back. */
class Lease {
  static open = new Set();
  constructor(device, owner) {
    this.device = device;
    this.owner = owner;
    Lease.open.add(this);
  }
  Renew() { this.renewed = Date.now(); return this; }
  Release() { Lease.open.delete(this); }
  static ReleaseAll() { [...Lease.open].forEach((lease) => lease.Release()); }      /* decoy */
}

function listen() {
  const lease = new Lease(byId('mic'), 'voice').Renew();                    /* decoy */
  lease.device.SetBeamWidth(40);                                            /* call: MICROPHONE.SetBeamWidth */
  lease.device.StartCapture();
  setTimeout(() => {
    lease.device.Release();                                                 /* call: MICROPHONE.Release */
    Lease.ReleaseAll();                                                     /* decoy */
  }, 30);
  return lease;
}

const actions = new Map([
  [403, () => registry.get('motion').ResetHistory()],                       /* call: MOTION.ResetHistory */
  [404, () => registry.get('comfort').ResetHistory()],                      /* decoy */
  [405, () => registry.get('time').IsNight() && paint()],                   /* decoy */
  [406, () => registry.get('light').SetSpectrum('warm')],                   /* call: LIGHTSENSOR.SetSpectrum */
  [13, listen],
  [27, () => {
    const virtual = sensors.filter(({ kind }) => kind === 'virtual').map(({ source }) => source);
    for (const one of virtual) one.ResetHistory();                          /* decoy */
    const [first] = virtual.sort((a, b) => a.Average() - b.Average());      /* decoy */
    first.Smooth(1);                                                        /* decoy */
    registry.get('motion').SetTapMode('double');                            /* call: MOTION.SetTapMode */
  }],
]);

sensors.forEach(prepare);
paint();
setInterval(paint, 100);
addEventListener('keydown', ({ keyCode }) => actions.get(keyCode)?.());
registry.get('motion').Average(8);                                          /* call: MOTION.Average */
registry.get('comfort').Sample();                                           /* decoy */
