'use strict';

class Emitter {
  constructor() {
    this.handlers = new Map();
  }

  on(name, handler) {
    if (!this.handlers.has(name)) this.handlers.set(name, []);
    this.handlers.get(name).push(handler);
    return this;
  }

  emit(name, ...args) {
    (this.handlers.get(name) || []).forEach((handler) => handler(...args));
  }
}

/** Something that tells how much its user moves. */
class Sensor extends Emitter {
  constructor(plugin) {
    super();
    this.plugin = plugin;
  }

  start() {
    throw new Error('abstract');
  }

  describe() {
    return `${this.constructor.name}: ${this.plugin.GetFirmware()}`;   /* call: BLUETOOTH.GetFirmware */
  }

  static create(kind) {
    const Class = { motion: MotionSensor, camera: CameraSensor, belt: HeartBelt }[kind];
    return new Class();
  }
}

class MotionSensor extends Sensor {
  constructor() {
    super(document.querySelector('#motion'));
  }

  start() {
    this.plugin.Start();
    this.plugin.SetSensitivity(3);
    this.plugin.SubscribeSteps((n) => this.emit('steps', n));   /* call: MOTION.SubscribeSteps */
  }

  stop() {
    this.plugin.Stop();
    this.plugin.UnsubscribeSteps();   /* call: MOTION.UnsubscribeSteps */
  }

  describe() {
    return 'remote control';
  }
}

class CameraSensor extends Sensor {
  constructor() {
    super(document.querySelector('#camera'));
  }

  start() {
    const { plugin } = this;
    plugin.Open();
    plugin.SetResolution('640x480');
    plugin.SetSkeletonTracking(true);   /* call: CAMERA.SetSkeletonTracking */
    plugin.StartPreview();
    plugin.OnPose((pose) => this.emit('pose', pose));   /* call: CAMERA.OnPose */
  }

  stop() {
    this.plugin.StopPreview();
    this.plugin.Close();
  }

  describe() {
    return `camera ${this.plugin.GetLensName()}`;   /* call: CAMERA.GetLensName */
  }
}

class HeartBelt extends Sensor {
  constructor() {
    super(document.querySelector('#bluetooth'));
    this.rate = 0;
  }

  start() {
    this.plugin.Open();
    this.plugin.StartDiscovery();
    this.plugin.ReadCharacteristic('0x180D', (value) => {   /* call: BLUETOOTH.ReadCharacteristic */
      this.rate = value;
      this.emit('pulse', value);
    });
  }

  stop() {
    this.plugin.Disconnect();
    this.plugin.Close();
  }
}

// Replays a recorded workout. For trade fairs: no sensor, no plug-in.
class Replay extends Sensor {
  constructor(poses) {
    super({ SetSkeletonTracking() {}, GetLensName: () => 'replay' });
    this.poses = poses;
  }

  start() {
    this.plugin.SetSkeletonTracking(false);   /* decoy */
    this.poses.forEach((pose) => this.emit('pose', pose));
  }

  describe() {
    return this.plugin.GetLensName();   /* decoy */
  }

  stop() {}
}

class Exercise {
  constructor(title, seconds, goal) {
    Object.assign(this, { title, seconds, goal, done: 0 });
  }

  get progress() {
    return Math.min(1, this.done / this.goal);
  }

  count(n = 1) {
    this.done += n;
    return this.progress === 1;
  }
}

class Workout extends Emitter {
  constructor(exercises, sensors) {
    super();
    this.exercises = exercises;
    this.sensors = sensors;
    this.index = 0;
    for (const sensor of sensors) {
      sensor.on('steps', (n) => this.count(n)).on('pose', () => this.count(1)).on('pulse', (p) => this.check(p));
    }
  }

  get current() {
    return this.exercises[this.index];
  }

  count(n) {
    if (this.current && this.current.count(n)) {
      this.index += 1;
      this.emit('exercise', this.current);
    }
    this.emit('progress', this.current);
  }

  check(pulse) {
    if (pulse > 150) this.emit('pause');
  }

  begin() {
    this.sensors.forEach((sensor) => sensor.start());
    this.emit('exercise', this.current);
  }

  end() {
    this.sensors.forEach((sensor) => sensor.stop());
  }
}

class View {
  constructor(node, workout) {
    this.node = node;
    workout.on('exercise', (exercise) => this.title(exercise)).on('progress', (exercise) => this.bar(exercise));
  }

  title(exercise) {
    this.node.innerHTML = exercise ? `<h2>${exercise.title}</h2><progress max="1" value="0"></progress>` : 'Done!';
  }

  bar(exercise) {
    const bar = this.node.querySelector('progress');
    if (bar && exercise) bar.value = exercise.progress;
  }
}

const sensors = ['motion', 'camera', 'belt'].map((kind) => Sensor.create(kind));
const workout = new Workout([
  new Exercise('Squats', 30, 10),
  new Exercise('Jumping jacks', 30, 20),
  new Exercise('Plank', 60, 1),
], sensors);
const view = new View(document.getElementById('workout'), workout);

document.addEventListener('keydown', ({ keyCode }) => {
  const actions = {
    13: () => workout.begin(),
    413: () => workout.end(),
    403: () => { document.title = sensors.map((s) => s.describe()).join(' / '); },
    404: () => new Replay([1, 2, 3]).on('pose', () => workout.count(1)).start(),
    405: () => {
      const [motion, , belt] = sensors;
      motion.plugin.SetGestureSet('sport');   /* call: MOTION.SetGestureSet */
      belt.plugin.SetConnectionInterval(20);   /* call: BLUETOOTH.SetConnectionInterval */
    },
    406: () => { document.title = new Replay([]).describe(); },
  };
  (actions[keyCode] || (() => {}))();
});
