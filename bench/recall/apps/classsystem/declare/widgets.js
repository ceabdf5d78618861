declare("tv.mixin.HasPlugin", null, {
	initialize: function () {
		this.plugin = document.createElement("object");
		this.plugin.setAttribute("classid", "clsid:MORVANE-NAVERTIX-" + this.pluginName);
		document.body.appendChild(this.plugin);
	},
	unplug: function () {
		this.plugin.parentNode.removeChild(this.plugin);
	}
});

declare("tv.mixin.Logging", null, {
	trace: function () {
		(this.lines = this.lines || []).push([].join.call(arguments, " "));
	}
});

declare("tv.mixin.Timed", null, {
	after: function (ms, method) {
		var self = this, args = [].slice.call(arguments, 2);
		return setTimeout(function () { self[method].apply(self, args); }, ms);
	}
});

declare("tv.Widget", null, {
	statics: { count: 0 },
	initialize: function (options) {
		tv.Widget.count++;
		for (var k in options) {
			this[k] = options[k];
		}
		this.node = document.createElement("section");
		document.getElementById("root").appendChild(this.node);
	},
	text: function (t) {
		this.node.innerHTML = t;
	},
	key: function () {}
});

declare("tv.Map", [tv.Widget, tv.mixin.HasPlugin, tv.mixin.Logging], {
	pluginName: "SCREEN",
	zoom: 1,
	initialize: function () {
		this.plugin.SetGraphicsLayer(1);			/* call: SCREEN.SetGraphicsLayer */
		this.draw();
	},
	draw: function () {
		this.text("Map x" + this.zoom);
		this.plugin.InvalidateRect(0, 0, 800, 600);		/* call: SCREEN.InvalidateRect */
		this.trace("draw", this.zoom);
	},
	key: function (code) {
		if (code === 38 || code === 40) {
			this.zoom = Math.max(1, this.zoom + (39 - code));
			this.draw();
		}
	}
});

declare("tv.SearchBox", [tv.Widget, tv.mixin.HasPlugin, tv.mixin.Timed], {
	pluginName: "KEYBOARD",
	initialize: function () {
		this.plugin.SetLayout("abc");
		this.plugin.SetDictionary("places");			/* call: KEYBOARD.SetDictionary */
		this.after(10, "suggest", "har");
	},
	suggest: function (prefix) {
		this.text(prefix + "…");
		this.plugin.SetSuggestions(["harbour", "hardy"]);	/* call: KEYBOARD.SetSuggestions */
	},
	key: function (code) {
		if (code === 403) {
			this.plugin.Show();
			this.plugin.AttachTo(this.node);		/* call: KEYBOARD.AttachTo */
		}
	}
});

declare("tv.PlaceSearchBox", tv.SearchBox, {
	suggest: function suggest(prefix) {
		suggest.inherited.call(this, prefix.toUpperCase());
		this.plugin.HighlightSuggestion(0);			/* call: KEYBOARD.HighlightSuggestion */
	}
});

declare("tv.Contact", [tv.Widget, tv.mixin.HasPlugin, tv.mixin.Logging, tv.mixin.Timed], {
	pluginName: "ACCOUNT",
	statics: {
		shared: function () {
			return tv.Contact._shared || (tv.Contact._shared = new tv.Contact({ agency: "Seaside" }));
		}
	},
	initialize: function () {
		this.text("Call " + this.agency);
	},
	request: function (room) {
		this.plugin.SendContactForm(room);			/* call: ACCOUNT.SendContactForm */
		this.trace("request", room);
		this.after(5, "thank");
	},
	thank: function () {
		this.text("Thank you");
		this.plugin.SetMarketingConsent(false);			/* call: ACCOUNT.SetMarketingConsent */
	},
	key: function (code) {
		if (code === 13) {
			tv.Contact.shared().request(12);
		}
	}
});

declare("tv.Printer", [tv.Widget, tv.mixin.Logging], {
	initialize: function () {
		this.plugin = { InvalidateRect: function () {}, SendContactForm: function () {} };
	},
	key: function (code) {
		if (code === 404) {
			this.plugin.InvalidateRect();			/* decoy */
			this.plugin.SendContactForm();			/* decoy */
		}
	}
});

(function () {
	var widgets = [new tv.Map(), new tv.PlaceSearchBox({ placeholder: "Where?" }), tv.Contact.shared(), new tv.Printer()];
	document.onkeydown = function (e) {
		for (var i = 0; i < widgets.length; i++) {
			widgets[i].key(e.keyCode);
		}
		if (e.keyCode === 406) {
			widgets[2].plugin.DeleteProfileData();		/* call: ACCOUNT.DeleteProfileData */
		}
	};
	widgets[0].plugin.SetLayerOrder("map,text");			/* call: SCREEN.SetLayerOrder */
})();
