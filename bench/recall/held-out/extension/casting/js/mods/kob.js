define("kob", [], function () {
  var plugin = document.getElementById("kob");
  var OPERATIONS = {
    open: "CastOpen",                                   /* call: KOB.CastOpen */
    close: "CastClose",                                 /* call: KOB.CastClose */
    volume: "CastSetVolume"                             /* call: KOB.CastSetVolume */
  };

  function execute(command) {
    var args = Array.prototype.slice.call(arguments);
    return plugin.Execute.apply(plugin, args);          /* also: KOB.CastOpen, KOB.CastClose, KOB.CastSetVolume, KOB.CastGetPeers, KOB.CastShowCode */
  }

  return {
    version: function () { return plugin.GetVersion(); },
    operation: function (name, value) { return execute(OPERATIONS[name], value); },
    execute: execute,
    mirror: function (on) {
      return plugin.Execute(on ? "MirrorStart" : "MirrorStop", 1280, 720);      /* call: KOB.MirrorStart, KOB.MirrorStop */
    },
    raw: plugin
  };
});
