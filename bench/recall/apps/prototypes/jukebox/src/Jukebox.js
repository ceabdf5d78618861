function Jukebox(ids, mixer, list) {
	this.decks = [];
	for (var i = 0; i < ids.length; i++) {
		this.decks.push(new Deck($(ids[i]), ids[i]));
	}
	this.active = 0;
	this.mixer = $(mixer);
	this.list = list;
	this.playlist = new Playlist();
	this.playlist.add("Harbour", "a.mp3", 181000).add("Low Tide", "b.mp3", 240500).add("Signals", "c.mp3", 199000);
	document.onkeydown = this.key.bind(this);
}

Jukebox.prototype.start = function () {
	this.mixer.SetVolume(10);
	this.mixer.SetMixerCurve("constant-power");		/* call: AUDIO.SetMixerCurve */
	this.playlist.SetGapless(true);				/* decoy */
	this.crossfade();
};

Jukebox.prototype.deck = function () {
	return this.decks[this.active];
};

Jukebox.prototype.crossfade = function () {
	var from = this.deck();
	this.active = 1 - this.active;
	var to = this.deck();
	to.load(this.playlist.next());
	to.fade(100);
	if (from.track) {
		from.fade(0).stop();
	}
	this.mixer.SetSpectrumTap(to.name);			/* call: AUDIO.SetSpectrumTap */
	this.draw();
};

Jukebox.prototype.draw = function () {
	this.list.innerHTML = this.playlist.toHtml();
	$("now").innerHTML = this.deck().name + ": " + this.deck().tags.artist;
};

Jukebox.prototype.key = function (e) {
	switch (e.keyCode) {
	case 39: this.crossfade(); break;
	case 38: this.deck().nudge(500); break;
	case 40: this.deck().nudge(-500); break;
	case 13: this.deck().plugin.Pause(); break;
	case 413: this.deck().stop(); break;
	case 403: this.playlist.shuffled = !this.playlist.shuffled; break;
	case 404: this.party(); break;
	}
};

// The old way, before decks:
//   mixer.plugin.SetTrackGain(level);   /* decoy */
Jukebox.prototype.party = function () {
	var i, d;
	for (i = 0; i < this.decks.length; i++) {
		d = this.decks[i];
		d.plugin.EnableVisualizer(i);			/* call: PLAYER.EnableVisualizer */
	}
	this.mixer.SetSurroundPreset("club");			/* call: AUDIO.SetSurroundPreset */
};
