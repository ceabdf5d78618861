/**
 * A finite state machine. States have enter, exit and on (event: next state, or a function that gives it).
 */
function Machine(definition, context) {
  this.states = definition.states;
  this.context = context;
  this.listeners = [];
  this.current = null;
  this.go(definition.initial);
}
Machine.prototype.go = function (name, data) {
  var from = this.states[this.current], to = this.states[name];
  if (!to) { throw new Error("No state " + name); }
  if (from && from.exit) { from.exit.call(this.context, data); }
  this.current = name;
  for (var i = 0; i < this.listeners.length; i++) { this.listeners[i](name); }
  if (to.enter) { to.enter.call(this.context, data, this); }
};
Machine.prototype.send = function (event, data) {
  var on = this.states[this.current].on || {}, target = on[event];
  if (typeof target === "function") { target = target.call(this.context, data); }
  if (target) { this.go(target, data); }
  return !!target;
};
