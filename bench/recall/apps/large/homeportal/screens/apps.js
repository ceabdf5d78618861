/* The applications that are there, and those that come. */
Portal.AppsScreen = Portal.inherit(function () {
    Portal.Component.call(this, 'apps');
    this.tiles = ['news', 'weather', 'games'].map(function (name) { return new Portal.Tile(name); });
    this.focus = 0;
}, Portal.Component, {
    Html: function () {
        return this.tiles.map(function (tile) { return tile.Html(); }).join('');        /* decoy */
    },
    Key: function (code) {
        var loader = Portal.store.device('apploader');
        switch (code) {
        case 37: this.Move(-1); return true;                    /* decoy */
        case 39: this.Move(1); return true;                     /* decoy */
        case 13:
            this.tiles[this.focus].Launch(loader);              /* decoy */
            return true;
        case 33:
            loader.Suspend(this.focus);                         /* call: APPLOADER.Suspend */
            return true;
        case 34:
            loader.Refresh();                                   /* call: APPLOADER.Refresh */
            return true;
        }
        return false;
    },
    Move: function (by) {
        this.tiles[this.focus].Blur();                          /* decoy */
        this.focus = (this.focus + by + this.tiles.length) % this.tiles.length;
        this.tiles[this.focus].Focus();                         /* decoy */
        this.Refresh();                                         /* decoy */
    }
});

Portal.Tile = function (name) { this.name = name; this.on = false; };
Portal.Tile.prototype = {
    Focus: function () { this.on = true; },
    Blur: function () { this.on = false; },
    Html: function () { return (this.on ? '>' : '') + this.name; },
    Launch: function (loader) {
        loader.LoadApplication(this.name);
        loader.SetSplash(this.name + '.png');                   /* call: APPLOADER.SetSplash */
    }
};
