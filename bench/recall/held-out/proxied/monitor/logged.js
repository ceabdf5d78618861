// Wraps a plug-in: every call is logged, and counted.
const callLog = [];

function logged(plugin, label) {
  return new Proxy(plugin, {
    get(target, name) {
      const member = Reflect.get(target, name, target);
      if (typeof member !== 'function') return member;
      return (...args) => {
        const started = performance.now();
        const result = member.apply(target, args);      /* also: NETWORK.Traceroute, NETWORK.SetMtu, BANDWIDTH.GetJitter, BANDWIDTH.SetServer */
        callLog.push({ label, name, ms: performance.now() - started });
        return result;
      };
    },
  });
}

// Short names: net.trace(...) for net.Traceroute(...).
function aliased(plugin, aliases) {
  return new Proxy({}, {
    get: (_, name) => (...args) => Reflect.apply(plugin[aliases[name] || name], plugin, args),    /* also: NETWORK.PingHost, NETWORK.ScanWifi */
    has: (_, name) => name in aliases,
  });
}

// Defaults for what an old set does not have.
const fallback = (object, defaults) => new Proxy(object, {
  get: (target, name) => (name in target ? target[name] : defaults[name]),
});
