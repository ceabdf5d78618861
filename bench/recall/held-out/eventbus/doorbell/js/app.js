(function () {
  var visitors = [], socket;

  function draw() {
    document.getElementById("visitors").innerHTML = visitors.map(function (v) { return "<p>" + v + "</p>"; }).join("");
  }

  Bus.subscribe("door/ring", function (ring) {
    visitors.unshift(new Date(ring.time).toString());
    notes.PlayTone(2);                                  /* decoy */
    draw();
  });

  // The gateway of the house tells of events, and what the camera shall do then.
  function connect() {
    try { socket = new WebSocket("ws://gateway.home:8080/"); } catch (e) { return; }
    socket.onmessage = function (message) {
      var event = JSON.parse(message.data);
      Bus.publish(event.topic, event.data);
      if (event.camera) {
        document.getElementById("cam")[event.camera.action](event.camera.value);      /* undecidable: CAMERA */
      }
    };
  }

  document.onkeydown = function (e) {
    switch (e.keyCode) {
      case 403: Bus.publish("door/ring", { time: Date.now(), dark: true }); break;
      case 404: Bus.publish("door/unlock", "viewer"); break;
      case 405: Bus.publish("visitor/unwanted"); break;
      case 37: Bus.publish("camera/pan", { x: -1, y: 0 }); break;
      case 39: Bus.publish("camera/pan", { x: 1, y: 0 }); break;
      case 457:
        Bus.publish("ask/port", function (port) { port.QueryFirmware(); });      /* call: SERIALPORT.QueryFirmware */
        break;
      case 461: Bus.publish("door/closed"); break;
      case 406: Bus.publish("note/help", { text: "camera.TakePicture() or camera.RecordClip()" }); break;     /* decoy */
    }
  };
  connect();
}());
