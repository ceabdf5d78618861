define("session", ["kob", "store"], function (kob, store) {
  var hdmi = document.getElementById("hdmi"), apps = document.getElementById("apps");

  var reducers = {
    peers: function (peers, action) {
      return action.type === "PEERS" ? action.peers : peers || [];
    },
    session: function (session, action) {
      switch (action.type) {
        case "OPEN": return { peer: action.peer, volume: 30 };
        case "VOLUME": return session && { peer: session.peer, volume: session.volume + action.by };
        case "CLOSE": return null;
        default: return session || null;
      }
    },
    log: function (lines, action) { return (lines || []).concat(action.type).slice(-5); }
  };

  var actions = {
    open: function (peer) {
      return { type: "OPEN", peer: peer, plugin: { name: "hdmi", method: "SwitchToCast", args: [peer] } };      /* call: HDMI.SwitchToCast */
    },
    close: function () {
      return { type: "CLOSE", plugin: { name: "apps", method: "BringToFront", args: ["cast"] } };               /* call: APPLOADER.BringToFront */
    },
    block: function () { return { type: "BLOCK", plugin: { name: "hdmi", method: "BlockInput", args: [1] } }; },      /* call: HDMI.BlockInput */
    volume: function (by) { return { type: "VOLUME", by: by }; },
    peers: function () {
      return { type: "PEERS", peers: ["Phone", "Tablet"].slice(0, kob.execute("CastGetPeers") + 1) };           /* call: KOB.CastGetPeers */
    }
  };

  // Every change of the session goes to the extension.
  function extension(api) {
    return function (next) {
      return function (action) {
        var before = api.getState().session, result = next(action), after = api.getState().session;
        if (!before && after) { kob.operation("open", after.peer); }
        if (before && !after) { kob.operation("close"); }
        if (before && after && before.volume !== after.volume) { kob.operation("volume", after.volume); }
        return result;
      };
    };
  }

  return {
    store: store.create(reducers, [extension, store.plugins({ hdmi: hdmi, apps: apps })]),
    actions: actions,
    // A receiver for tests in the office.
    fake: { Execute: function (name) { return name.length; }, SwitchToCast: function () { return 0; } }
  };
});
