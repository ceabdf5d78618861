require(["session", "kob"], function (session, kob) {
  var store = session.store, actions = session.actions;

  store.subscribe(function (state) {
    document.getElementById("view").innerHTML = state.session ?
      "<h1>" + state.session.peer + "</h1><p>Volume " + state.session.volume + "</p>" :
      "<h1>Waiting</h1><ul>" + state.peers.map(function (p) { return "<li>" + p + "</li>"; }).join("") + "</ul>";
  });

  // Phones send commands for the extension, for the input and for applications.
  function listen() {
    var socket;
    try { socket = new WebSocket("ws://cast.home/"); } catch (e) { return; }
    socket.onmessage = function (event) {
      var message = JSON.parse(event.data);
      switch (message.kind) {
        case "extension":
          kob.raw.Execute(message.command, message.value);        /* undecidable: KOB */
          break;
        case "input":
          document.getElementById("hdmi")[message.method]();      /* undecidable: HDMI */
          break;
        case "app":
          var loader = document.getElementById("apps");
          loader[message.verb + "Application"](message.id);       /* undecidable: APPLOADER */
          break;
      }
    };
  }

  document.addEventListener("keydown", function (e) {
    switch (e.keyCode) {
      case 13: store.dispatch(actions.open(store.getState().peers[0] || "Phone")); break;
      case 403: store.dispatch(actions.peers()); break;
      case 404: kob.mirror(true); break;
      case 405: kob.mirror(false); break;
      case 406: store.dispatch(actions.block()); break;
      case 447: store.dispatch(actions.volume(5)); break;
      case 448: store.dispatch(actions.volume(-5)); break;
      case 457:
        kob.execute("CastShowCode", 4);                           /* call: KOB.CastShowCode */
        session.fake.Execute("CastPanic");                        /* decoy */
        session.fake.SwitchToCast();                              /* decoy */
        break;
      case 461: store.dispatch(actions.close()); break;
      case 48: document.title = "kob.Execute('CastReset') restarts the receiver"; break;     /* decoy */
    }
  });

  kob.version();
  kob.raw.Start();
  document.getElementById("apps").RegisterScheme("cast");         /* call: APPLOADER.RegisterScheme */
  listen();
});
