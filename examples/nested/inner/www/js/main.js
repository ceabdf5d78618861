"use strict";

// Start of the trailer: one video object, one file.

window.onload = function () {
  init('tv');
};
