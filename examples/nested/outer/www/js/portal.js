"use strict";

// The portal. The trailer is an application of its own, delivered inside this one as inner.wgt.

var KEY_ENTER = 13;

function playTrailer() {
  var loader = document.getElementById("loader");
  loader.LoadApplication("inner.wgt");
}

window.onload = function () {
  window.onkeydown = function (event) {
    if (event.keyCode === KEY_ENTER) {
      playTrailer();
    }
  };
};
