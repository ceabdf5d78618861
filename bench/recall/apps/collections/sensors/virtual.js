'use strict';

/** Sensors that are computed: from others, from the time of day, from the weather. */
class VirtualSensor {
  constructor(name, read) {
    this.name = name;
    this.read = read;
    this.history = [];
  }
  Sample() {
    const value = this.read();
    this.history.push(value);
    return value;
  }
  Average() { return this.history.reduce((sum, one) => sum + one, 0) / (this.history.length || 1); }
  Smooth(factor) { this.factor = factor; return this; }
  ResetHistory() { this.history = []; }
}

class TimeOfDay extends VirtualSensor {
  constructor() { super('time', () => new Date().getHours()); }
  IsNight() { return this.Sample() < 6; }                                   /* decoy */
}
