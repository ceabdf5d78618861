// Sets of Solara have a global object. Elsewhere we bring one that does the least, for our tests of the pages.
var solara = window.solara || {
    Media: {
        state: 0,
        SetUrl: function (url) { this.url = url; },
        SetBufferSize: function (n) { this.buffer = n; },
        TrickPlay: function (n) { this.speed = n; },
        GetStreamInfo: function () { return { url: this.url }; },
        Detach: function () { this.url = null; }
    },
    Screen: {
        SetVideoWindow: function (x, y, w, h) { this.box = [x, y, w, h]; },
        ClearVideoWindow: function () { this.box = null; }
    }
};

Adapters.add('solara', function () { return !!window.isSolara; }, function () {
    var media = solara.Media, screen = solara.Screen;
    return {
        vendor: 'solara',
        open: function (url) {
            media.SetUrl(url);                          /* decoy */
            media.SetBufferSize(4096);                  /* decoy */
        },
        play: function () { media.TrickPlay(1); },      /* decoy */
        rate: function (n) { media.TrickPlay(n); },     /* decoy */
        sound: function () {},
        picture: function (width, height) {
            screen.SetVideoWindow(0, 0, width, height); /* decoy */
        },
        info: function () { return media.GetStreamInfo(); },        /* decoy */
        close: function () {
            media.Detach();                             /* decoy */
            screen.ClearVideoWindow();                  /* decoy */
        }
    };
});
