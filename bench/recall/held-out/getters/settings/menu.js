"use strict";
(function () {
  var rows = [
    { label: "Brightness", model: picture, property: "brightness", step: 1 },
    { label: "Sharpness", model: picture, property: "sharpness", step: 2 },
    { label: "Gamma", model: picture, property: "gamma", step: 1 },
    { label: "Volume", model: sound, property: "volume", step: 1 },
    { label: "Bass", model: sound, property: "bass", step: 1 },
    { label: "Surround", model: sound, property: "surround", toggle: true },
    { label: "CEC", get model() { return cec; }, property: "enabled", toggle: true }
  ];
  var cec = {
    state: false,
    get enabled() { return this.state; },
    set enabled(on) {
      var hdmi = services.hdmi;
      this.state = on;
      hdmi.SetCecEnabled(on);                           /* call: HDMI.SetCecEnabled */
      if (on) {
        hdmi.SendCecCommand(0, 0x36);                   /* call: HDMI.SendCecCommand */
      }
    }
  };
  var at = 0;

  function render() {
    document.getElementById("menu").innerHTML = rows.map(function (row, i) {
      return "<li" + (i === at ? " class='on'" : "") + ">" + row.label + ": " + row.model[row.property] + "</li>";
    }).join("");
    document.title = sound.describe();
  }

  function change(direction) {
    var row = rows[at], model = row.model, old = model[row.property];
    model[row.property] = row.toggle ? !old : old + direction * row.step;
    preview.SetSharpness(old);                          /* decoy */
    preview.SetBass(old);                               /* decoy */
    render();
  }

  document.addEventListener("keydown", function (e) {
    switch (e.keyCode) {
      case 38: at = (at + rows.length - 1) % rows.length; break;
      case 40: at = (at + 1) % rows.length; break;
      case 37: change(-1); break;
      case 39: change(1); break;
      case 457:
        services.hdmi.GetInputName(1);
        var edid = services.hdmi.ReadEdid(1);           /* call: HDMI.ReadEdid */
        document.title = "EDID " + edid + "; WriteEdid() is for service only";    /* decoy */
        return;
      case 403: picture.reset(); break;
      case 13: at = (at + 1) % rows.length; change(1); return;
      default:
        if (e.keyCode >= 49 && e.keyCode < 49 + rows.length) {
          at = e.keyCode - 49;
          change(1);
        }
        return;
    }
    render();
  });
  if (services.ready) { render(); }
}());
