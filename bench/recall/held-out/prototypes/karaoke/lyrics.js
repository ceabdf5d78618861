// Lines of a song with their times.
function Lyrics(lines) {
  this.lines = lines;
  this.index = 0;
}
Lyrics.prototype.at = function (ms) {
  while (this.index < this.lines.length - 1 && this.lines[this.index + 1][0] <= ms) {
    this.index++;
  }
  return this.lines[this.index];
};
Lyrics.prototype.next = function () {
  var n = this.lines[this.index + 1];
  return n ? n[1] : "";
};
Lyrics.prototype.reset = function () { this.index = 0; };
// Same name as a call of the player plug-in, but only moves text.
Lyrics.prototype.SetKeyShift = function (n) { this.shift = n; };

function Song(title, url, lines, key) {
  this.title = title;
  this.url = url;
  this.key = key || 0;
  this.lyrics = new Lyrics(lines);
}
Song.prototype.toString = function () { return this.title; };

var SONGS = [
  new Song("Evening on the river", "media/river.mp4", [[0, "The boats are coming home"], [80, "across the silver foam"], [200, "and I am still alone"]], 2),
  new Song("Mountain train", "media/train.mp4", [[0, "Up, up, up it goes"], [100, "through the winter snows"]], -1)
];
