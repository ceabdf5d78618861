// A small runner of effects: generators yield what is to be done, the runner does it.
const effects = {
  call: (target, method, ...args) => ({ type: 'CALL', target, method, args }),
  wait: (ms) => ({ type: 'WAIT', ms }),
  put: (action) => ({ type: 'PUT', action }),
  select: (selector) => ({ type: 'SELECT', selector }),
  fork: (generator) => ({ type: 'FORK', generator }),
};

function createRunner(reducer, onChange) {
  let state = reducer(undefined, { type: '@@init' });
  const handlers = {
    CALL: ({ target, method, args }, next) => next(target[method](...args)),    /* also: TUNERSCAN.SetSymbolRate, TUNER.EnableLnbPower, TUNERSCAN.AbortNow */
    WAIT: ({ ms }, next) => setTimeout(next, ms),
    PUT: ({ action }, next) => {
      state = reducer(state, action);
      onChange(state);
      next();
    },
    SELECT: ({ selector }, next) => next(selector(state)),
    FORK: ({ generator }, next) => { run(generator); next(); },
  };
  function run(generator) {
    (function step(value) {
      const { done, value: effect } = generator.next(value);
      if (!done) handlers[effect.type](effect, step);
    }());
  }
  return { run, getState: () => state };
}
