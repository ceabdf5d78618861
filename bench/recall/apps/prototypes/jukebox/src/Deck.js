/** What plays something: it has a plug-in and a volume of its own. */
function Source(plugin) {
	this.plugin = plugin;
	this.track = null;
}

Source.prototype.load = function (track) {
	this.track = track;
	this.plugin.Open(track.url);
	this.plugin.SetBufferTime(4000);			/* call: PLAYER.SetBufferTime */
};

Source.prototype.stop = function () {
	this.plugin.Stop();
	this.plugin.Close();
	this.track = null;
};

function Deck(plugin, name) {
	Source.call(this, plugin);
	this.name = name;
	this.level = 0;
}
inherit(Deck, Source);

Deck.prototype.load = function (track) {
	Deck.parent.load.call(this, track);
	this.plugin.SetGapless(true);				/* call: PLAYER.SetGapless */
	this.readTags();
};

Deck.prototype.readTags = function () {
	var p = this.plugin;
	this.tags = {
		artist: p.GetTag("TPE1"),			/* call: PLAYER.GetTag */
		year: p.GetTag("TYER"),				/* also: PLAYER.GetTag */
		cover: p.GetCoverArt()				/* call: PLAYER.GetCoverArt */
	};
};

Deck.prototype.fade = function (to) {
	this.level = to;
	this.plugin.SetTrackGain(to / 100);			/* call: PLAYER.SetTrackGain */
	if (to > 0) {
		this.plugin.Play();
	}
	return this;
};

Deck.prototype.nudge = function (ms) {
	this.plugin.SeekTo(this.plugin.GetPosition() + ms);
	this.plugin.SetPitchBend(ms > 0 ? 1 : -1);		/* call: PLAYER.SetPitchBend */
};
