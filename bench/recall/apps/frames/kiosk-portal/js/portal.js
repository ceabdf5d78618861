var Portal = {
  tabs: ['news', 'weather', 'teletext'],
  at: 0,
  loaded: 0,

  start: function () {
    var scr = document.getElementById('scr');
    scr.ReserveLayer('portal', 2);                             /* call: SCREEN.ReserveLayer */
    document.addEventListener('keydown', function (e) { Portal.key(e.keyCode); }, false);
    this.draw();
    var news = document.getElementById('content').contentWindow;
    if (news.News) {
      news.News.attach(document.getElementById('chan'));
    }
    window.frames['ticker'].setSource(document.getElementById('tele'), 102);
  },

  draw: function () {
    document.getElementById('tabs').innerHTML = this.tabs.map(function (tab, i) {
      return i === Portal.at ? '[' + tab + ']' : tab;
    }).join(' ');
  },

  key: function (code) {
    var inner = document.getElementById('content').contentWindow;
    switch (code) {
      case 37: this.at = Math.max(0, this.at - 1); break;
      case 39: this.at = Math.min(this.tabs.length - 1, this.at + 1); break;
      case 13: if (inner.Page) { inner.Page.enter(); } break;
      case 403:
        // The clip of the news is a plug-in in the frame.
        inner.document.getElementById('clip').SetClipWindow(10, 10, 300, 200);   /* call: PLAYER.SetClipWindow */
        break;
      case 404:
        frames[1].document.getElementsByTagName('object')[0].ScrollText(2);   /* call: FONT.ScrollText */
        break;
    }
    this.draw();
  },

  // Called from the pages.
  api: {
    teletext: function () { return document.getElementById('tele'); },
    hold: function (plugin) {
      plugin.FreezePage(true);                                 /* call: TELETEXT.FreezePage */
    },
    JumpToNews: function () { Portal.at = 0; Portal.draw(); }
  }
};
