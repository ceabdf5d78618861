// The history of what was played. "Rewind" and "Bookmark" are of the list, not of the player.
function History() { this.entries = []; this.at = 0; }
History.prototype.Append = function (url) { this.entries.push(url); this.at = this.entries.length - 1; };
History.prototype.Rewind = function () { this.at = 0; return this.entries[0]; };
History.prototype.Bookmark = function (name) { this.entries[this.at] = name; };
History.prototype.Trim = function (n) { this.entries = this.entries.slice(-n); };

function Playlist(history) { this.history = history; this.urls = []; }
Playlist.prototype.Enqueue = function (url) { this.urls.push(url); return this; };
Playlist.prototype.Shuffle = function () { this.urls.reverse(); };
Playlist.prototype.Advance = function () {
    var url = this.urls.shift();
    if (url) { this.history.Append(url); }                  /* decoy */
    return url;
};

// Software decoder for sounds of the menu. It has the interface of the player where it makes sense.
function Beeper() { this.tones = []; }
Beeper.prototype.Prepare = function (name) { this.tones.push(name); };
Beeper.prototype.PlaySegment = function (from, to) { return to - from; };
Beeper.prototype.Unload = function () { this.tones.length = 0; };
