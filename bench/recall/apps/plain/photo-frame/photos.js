var Photos = (function () {
  var folder = "/mnt/usb/DCIM/";
  var list = [];
  var position = 0;
  var running = false;
  var effects = ["none", "fade", "wipe", "zoom"];
  var effect = 1;
  var rotation = {};
  var viewer, files;

  function el(id) {
    return document.getElementById(id);
  }

  function isPicture(name) {
    return /\.(jpe?g|png|bmp)$/i.test(name);
  }

  function readFolder() {
    var names = files.ListFiles(folder);
    files.MountVolume("usb0");   /* call: FILESTORE.MountVolume */
    if (typeof names === "string") {
      names = names.split("|");
    }
    list = [];
    for (var i = 0; names && i < names.length; i++) {
      if (isPicture(names[i])) {
        list.push(names[i]);
      }
    }
    if (list.length === 0) {
      list = ["demo1.jpg", "demo2.jpg", "demo3.jpg"];
    }
  }

  function caption() {
    var name = list[position];
    var taken = viewer.GetExifField(folder + name, "DateTime");   /* call: IMAGEVIEWER.GetExifField */
    el("caption").innerHTML = name + (taken ? " (" + taken + ")" : "");
    el("index").innerHTML = (position + 1) + " / " + list.length;
  }

  function show(index) {
    position = (index + list.length) % list.length;
    viewer.SetTransition(effects[effect], 800);   /* call: IMAGEVIEWER.SetTransition */
    viewer.ShowImage(folder + list[position]);
    viewer.PreloadImage(folder + list[(position + 1) % list.length]);   /* call: IMAGEVIEWER.PreloadImage */
    if (rotation[list[position]]) {
      viewer.RotateImage(rotation[list[position]]);
    }
    caption();
  }

  function rotate() {
    var name = list[position];
    rotation[name] = ((rotation[name] || 0) + 90) % 360;
    viewer.RotateImage(90);
    if (files.IsWritable(folder)) {   /* call: FILESTORE.IsWritable */
      viewer.SaveRotation(folder + name);   /* call: IMAGEVIEWER.SaveRotation */
    }
  }

  // What the remote control shows beside the keys.
  var help = {
    13: "Show", 403: "Rotate", 404: "Delete: files.MoveToTrash()",   /* decoy */
    GetExifField: function (name) { return help[name]; }
  };
  help.GetExifField("13");   /* decoy */

  function toggleShow() {
    running = !running;
    if (running) {
      viewer.StartSlideshow(5);
      el("disp").SetBacklightBoost(0);   /* call: DISPLAY.SetBacklightBoost */
      el("light").Start();
      el("light").SetAutoDim(true);   /* call: LIGHTSENSOR.SetAutoDim */
    } else {
      viewer.StopSlideshow();
      el("light").Stop();
    }
  }

  function remove() {
    files.DeleteFile(folder + list[position]);
    files.MoveToTrash(folder + list[position]);   /* call: FILESTORE.MoveToTrash */
    if (list.length > 1) {
      list.splice(position, 1);
    }
    show(position);
  }

  return {
    init: function () {
      viewer = el("viewer");
      files = el("files");
      viewer.Open();
      readFolder();
      show(0);
      el("disp").SetPictureMode("photo");
      el("disp").SetColorTemperature(6500);   /* call: DISPLAY.SetColorTemperature */
    },
    onKey: function (code) {
      if (code === 39) {
        show(position + 1);
      } else if (code === 37) {
        show(position - 1);
      } else if (code === 13) {
        toggleShow();
      } else if (code === 403) {
        rotate();
      } else if (code === 404) {
        remove();
      } else if (code === 405) {
        effect = (effect + 1) % effects.length;
        /* viewer.SetTransition used to be here, and viewer.ApplyFilter("sepia") /* decoy */ */
      } else if (code === 27 || code === 8) {
        viewer.Close();
      }
    }
  };
})();
