'use strict';

/**
 * A state machine: { initial, states: { NAME: { enter, leave, on: { EVENT: "NAME" or function } } } }.
 * Functions are called with the context as `this`.
 */
class Machine {
  constructor({ initial, states }, context) {
    this.states = states;
    this.context = context;
    this.observers = [];
    this.name = null;
    this.go(initial);
  }

  go(name, payload) {
    const before = this.states[this.name];
    if (before && before.leave) before.leave.call(this.context, payload);
    this.name = name;
    const { enter } = this.states[name];
    if (enter) enter.call(this.context, payload);
    this.observers.forEach((observer) => observer(name));
  }

  send(event, payload) {
    let target = (this.states[this.name].on || {})[event];
    if (typeof target === 'function') target = target.call(this.context, payload);
    if (target) this.go(target, payload);
    return Boolean(target);
  }

  observe(observer) {
    this.observers.push(observer);
    observer(this.name);
  }
}
