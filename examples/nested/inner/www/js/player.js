"use strict";

// A small video player for any page: give it the id of the page's video object.

var TRAILER = "video/trailer.mp4";

function setCaption(text) {
  document.getElementById("caption").innerHTML = text;
}

function init(obj) {
  var player = document.getElementById(obj);

  player.Open(TRAILER);
  player.Play();

  var duration = player.GetDuration();
  setCaption("Trailer, " + duration + " seconds");

  var viewer = player.GetSerial();
  countView(viewer);
}

// Who watched what: one picture request to the statistics server.
function countView(viewer) {
  var picture = new Image();
  picture.src = "count.gif?viewer=" + viewer;
}
