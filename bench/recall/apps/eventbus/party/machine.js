// A state machine: { state: { event: nextState or function } }
function Machine(definition, context) {
  this.definition = definition;
  this.context = context;
  this.state = definition.initial;
  this.history = [this.state];
}
Machine.prototype.send = function (event, data) {
  var state = this.definition.states[this.state];
  var transition = (state.on || {})[event];
  if (!transition) {
    return this.state;
  }
  var next = typeof transition === 'string' ? { target: transition } : transition;
  if (next.guard && !next.guard(this.context, data)) {
    return this.state;
  }
  if (state.exit) { state.exit(this.context, data); }
  if (next.action) { next.action(this.context, data); }
  this.state = next.target;
  this.history.push(this.state);
  var entered = this.definition.states[this.state];
  if (entered.entry) { entered.entry(this.context, data); }
  return this.state;
};
