define(function () {
  'use strict';
  return {
    recorder: function () { return document.getElementById('rec'); },
    epg: document.getElementById('epg'),
    with: function (name, cb) { cb(this[name]); }
  };
});
