'use strict';

/** Writes down each call that goes through, of plug-ins and of our own objects alike. */
const traced = (name, target) => new Proxy(target, {
  get(object, key) {
    const value = object[key];
    if (typeof value !== 'function') return value;
    return (...args) => {
      tracer.Record(`${name}.${String(key)}`);                              /* decoy */
      return value.apply(object, args);     /* call: BANDWIDTH.SetProbeSize, BLUETOOTH.SetVisible, BLUETOOTH.ReadBattery */
    };
  },
});

const tracer = {
  lines: [],
  Record(line) { this.lines.push(line); },
  Truncate(n) { this.lines = this.lines.slice(-n); },
  Dump(node) { node.innerHTML = this.lines.map((line) => `<li>${line}</li>`).join(''); },
};

/** Answers every name, and does nothing: for pages that are shown without a set. */
const silent = new Proxy({}, { get: () => () => undefined });
