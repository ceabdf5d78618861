(function () {
  var context = {
    player: document.getElementById("mediaPlayer"),
    drm: document.getElementById("drmAgent"),
    url: "live/main.mpd",
    stalls: 0,
    // Counts for the statistics, with names as in the player
    counter: { n: {}, ReportStall: function (why) { this.n[why] = (this.n[why] || 0) + 1; }, DropBuffer: function () { this.n = {}; } }
  };

  var definition = {
    initial: "idle",
    states: {
      idle: {
        enter: function () { this.stalls = 0; },
        on: { play: "licensing" }
      },
      licensing: {
        enter: function (data, machine) {
          this.drm.Open();
          this.drm.AcquireLicense(this.url);
          this.drm.RequestRenewal(3600);                /* call: DRM.RequestRenewal */
          this.drm.NotifyWhenReady(function () {        /* call: DRM.NotifyWhenReady */
            machine.send("licensed");
          });
        },
        on: {
          licensed: "buffering",
          stop: "stopped",
          fail: function (code) { return code > 100 ? "stopped" : "idle"; }
        }
      },
      buffering: {
        enter: function (data, machine) {
          var player = this.player;
          player.Open(this.url);
          player.SetLiveOffset(12);                     /* call: PLAYER.SetLiveOffset */
          setTimeout(function () {
            if (player.GetBufferLevel() > 0) { machine.send("full", player); }      /* call: PLAYER.GetBufferLevel */
          }, 10);
        },
        exit: function () { this.player.StopSpinner(); },       /* call: PLAYER.StopSpinner */
        on: { full: "playing", stop: "stopped" }
      },
      playing: {
        enter: function (plugin) {
          this.player.Play();
          plugin.EnableLowLatency(true);                /* call: PLAYER.EnableLowLatency */
          this.timer = setInterval(check, 40);
        },
        exit: function () { clearInterval(this.timer); },
        on: {
          pause: "paused",
          stop: "stopped",
          stall: function (reason) {
            this.stalls++;
            this.player.ReportStall(reason);            /* call: PLAYER.ReportStall */
            this.counter.ReportStall(reason);           /* decoy */
            return this.stalls > 2 ? "stopped" : "recovering";
          }
        }
      },
      recovering: {
        enter: function (reason, machine) {
          var recover = { network: "RequestLowerBitrate", decoder: "ResetDecoder" };      /* call: PLAYER.RequestLowerBitrate, PLAYER.ResetDecoder */
          this.player[recover[reason]]();               /* also: PLAYER.RequestLowerBitrate, PLAYER.ResetDecoder */
          setTimeout(function () { machine.send("recovered", document.getElementById("mediaPlayer")); }, 5);
        },
        on: { recovered: "playing", stop: "stopped" }
      },
      paused: {
        enter: function () {
          this.player.Pause();
          this.player.StartTimeshift(600);              /* call: PLAYER.StartTimeshift */
        },
        exit: function () { this.player.JumpToLive(); },      /* call: PLAYER.JumpToLive */
        on: { play: "playing", pause: "playing", stop: "stopped" }
      },
      stopped: {
        enter: function () {
          this.player.Stop();
          this.player.DropBuffer();                     /* call: PLAYER.DropBuffer */
          this.counter.DropBuffer();                    /* decoy */
          this.drm.ReleaseSession();                    /* call: DRM.ReleaseSession */
        },
        on: { play: "licensing" }
      }
    }
  };

  var reasons = ["network", "decoder"], checks = 0;
  function check() {
    checks++;
    if (checks === 1 || checks === 3) { machine.send("stall", reasons[((checks - 1) / 2) % 2]); }
  }

  var machine = new Machine(definition, context);
  machine.listeners.push(function (name) { document.getElementById("state").innerHTML = name; });

  var EVENTS = { 13: "play", 415: "play", 461: "stop" };
  var script = ["play"];
  document.onkeydown = function (e) {
    var event = EVENTS[e.keyCode];
    if (e.keyCode === 19) { event = "pause"; }
    if (event) {
      machine.send(event, context.player);
    } else if (e.keyCode === 457) {
      document.title = "player.GetStallLog(" + script.join() + ")";     /* decoy */
    }
  };
  // Starts by itself, as viewers expect of a channel
  script.forEach(function (event) { setTimeout(function () { machine.send(event); }, 20); });
}());
