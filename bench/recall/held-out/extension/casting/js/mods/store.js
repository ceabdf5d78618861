define("store", ["exports"], function (exports) {
  function combine(reducers) {
    return function (state, action) {
      var next = {};
      Object.keys(reducers).forEach(function (k) { next[k] = reducers[k]((state || {})[k], action); });
      return next;
    };
  }

  exports.create = function (reducers, middlewares) {
    var reducer = combine(reducers), state = reducer(undefined, { type: "@@init" }), listeners = [];
    var store = {
      getState: function () { return state; },
      subscribe: function (fn) { listeners.push(fn); },
      dispatch: function (action) {
        state = reducer(state, action);
        listeners.forEach(function (fn) { fn(state); });
        return action;
      }
    };
    var dispatch = store.dispatch;
    middlewares.slice().reverse().forEach(function (m) { dispatch = m(store)(dispatch); });
    store.dispatch = function (action) { return dispatch(action); };
    return store;
  };

  exports.plugins = function (table) {
    return function () {
      return function (next) {
        return function (action) {
          var call = action.plugin;
          if (call) { table[call.name][call.method].apply(table[call.name], call.args || []); }     /* also: HDMI.SwitchToCast, HDMI.BlockInput, APPLOADER.BringToFront */
          return next(action);
        };
      };
    };
  };
});
