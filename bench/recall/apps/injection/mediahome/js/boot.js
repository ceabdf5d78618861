(function () {
    function element(id) {
        return function () { return document.getElementById(id); };
    }
    function View(node) { this.node = node; }
    View.prototype.SetCaption = function (text) { this.node.title = text; };
    View.prototype.Highlight = function () { this.node.className = 'lit'; };

    var container = new Container()
        .register('player', element('player'))
        .register('viewer', element('images'))
        .register('network', element('net'))
        .register('beeper', function () { return new Beeper(); })
        .register('history', function () { return new History(); })
        .register('playlist', function (c) { return new Playlist(c.resolve('history')); })
        .register('view', function () { return new View(document.getElementById('screen')); });

    container.resolve('playlist').Enqueue('a.mp4').Enqueue('b.mp4');        /* decoy */
    container.resolve('playlist').Shuffle();                                /* decoy */
    container.resolve('network').FlushDns();                                /* call: NETWORK.FlushDns */

    var video = container.make(VideoController);
    var menu = container.make(MenuController);
    var picture = container.make(PictureController);
    video.next();

    document.addEventListener('keydown', function (e) {
        switch (e.keyCode) {
        case 38: case 40: menu.move(); break;
        case 27: menu.leave(); break;
        case 13: video.next(); break;
        case 33: video.chapter(10, 20); break;
        case 34: video.again(); break;
        case 403: video.mark(); break;
        case 404: picture.show('p.jpg'); break;
        case 405: picture.share(); break;
        case 406: picture.hint('here'); break;
        }
    });
}());
