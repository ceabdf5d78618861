function Playlist() {
	this.tracks = [];
	this.position = -1;
	this.shuffled = false;
}

Playlist.prototype.add = function (title, url, length) {
	this.tracks.push({ title: title, url: url, length: length });
	return this;
};

Playlist.prototype.next = function () {
	if (this.shuffled) {
		this.position = Math.floor(Math.random() * this.tracks.length);
	} else {
		this.position = (this.position + 1) % this.tracks.length;
	}
	return this.tracks[this.position];
};

Playlist.prototype.peek = function () {
	return this.tracks[(this.position + 1) % this.tracks.length];
};

// Same names as on the player: a list can be asked as well.
Playlist.prototype.SetGapless = function (on) {
	this.gapless = on;
};

Playlist.prototype.toHtml = function () {
	var html = "";
	for (var i = 0; i < this.tracks.length; i++) {
		html += "<li" + (i === this.position ? " class='on'" : "") + ">" + this.tracks[i].title + " (" +
			formatTime(this.tracks[i].length) + ")</li>";
	}
	return html;
};
