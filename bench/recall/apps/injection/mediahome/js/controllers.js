function VideoController(player, playlist, history) {
    this.next = function () {
        var url = playlist.Advance();                       /* decoy */
        player.Open(url || 'http://media.example/1.mp4');
        player.Prepare('hls');                              /* call: PLAYER.Prepare */
        player.Play();
    };
    this.chapter = function (from, to) {
        player.PlaySegment(from, to);                       /* call: PLAYER.PlaySegment */
    };
    this.again = function () {
        history.Rewind();                                   /* decoy */
        history.Trim(20);                                   /* decoy */
        player.Rewind();                                    /* call: PLAYER.Rewind */
    };
    this.mark = function () {
        history.Bookmark('here');                           /* decoy */
        player.DropBookmarks();                             /* call: PLAYER.DropBookmarks */
    };
}
VideoController.$inject = ['player', 'playlist', 'history'];

// The same shape: but its "player" makes the sounds of the menu.
function MenuController(player, view) {
    player.Prepare('click');                                /* decoy */
    this.move = function () {
        player.PlaySegment(0, 100);                         /* decoy */
        view.Highlight();                                   /* decoy */
    };
    this.leave = function () { player.Unload(); };          /* decoy */
}
MenuController.$inject = ['beeper', 'view'];

function PictureController(view, viewer, network) {
    this.show = function (url) {
        view.SetCaption(url);                               /* decoy */
        viewer.ShowImage(url);
        viewer.SetTransition('wipe', 300);                  /* call: IMAGEVIEWER.SetTransition */
    };
    this.share = function () {
        network.PublishService('pictures', 8200);           /* call: NETWORK.PublishService */
        viewer.CopyToFrameBuffer();                         /* call: IMAGEVIEWER.CopyToFrameBuffer */
    };
    this.hint = function (text) {
        view.Highlight();                                   /* decoy */
        viewer.Highlight(text);                             /* call: IMAGEVIEWER.Highlight */
    };
}
PictureController.$inject = ['view', 'viewer', 'network'];
