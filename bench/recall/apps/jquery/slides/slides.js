jQuery(function ($) {
  $.tvWidget('viewer', {
    options: { seconds: 5, folder: 'photos' },
    _create: function () {
      this.image = this._plugin('IMAGEVIEWER');
      this.image.Open();
      this.image.SetCacheSize(32);   /* call: IMAGEVIEWER.SetCacheSize */
      this.index = 0;
    },
    next: function () {
      this.index++;
      this.image.NextImage();
      this.image.SetPanEffect('kenburns');   /* call: IMAGEVIEWER.SetPanEffect */
    },
    prev: function () {
      if (this.index > 0) this.index--;
      this.image.PreviousImage();
    },
    info: function () {
      var size = this.image.GetImageSize();   /* call: IMAGEVIEWER.GetImageSize */
      this.element.attr('title', size);
    },
    close: function () {
      this._plugin('IMAGEVIEWER').Close();
      this._plugin('IMAGEVIEWER').FlushCache();   /* call: IMAGEVIEWER.FlushCache */
    }
  });

  $.tvWidget('slides', $.fn.viewer.Class, {
    options: { music: true },
    _create: function () {
      this._super();
      this.player = this._plugin('PLAYER');
      this.screen = this._plugin('SCREEN');
      this.screen.SetScreenSaver(false);
      this.screen.SetBurnInGuard(true);   /* call: SCREEN.SetBurnInGuard */
    },
    play: function () {
      var self = this;
      if (this.playing) {
        return this.pause();
      }
      this.playing = true;
      this.image.StartSlideshow(this.options.seconds);
      if (this.options.music) {
        this.player.Open('music/background.mp3');
        this.player.SetLoopMode('all');   /* call: PLAYER.SetLoopMode */
        this.player.Play();
      }
      $.each(['SetHueShift', 'SetVignette'], function (i, name) {
        self.image[name](i);   /* call: IMAGEVIEWER.SetHueShift, IMAGEVIEWER.SetVignette */
      });
    },
    pause: function () {
      this.playing = false;
      this.image.StopSlideshow();
      this.player.Pause();
      this.player.SetFadeTime(250);   /* call: PLAYER.SetFadeTime */
    },
    next: function () {
      this._super();
      this.screen.TriggerRepaint();   /* call: SCREEN.TriggerRepaint */
    }
  });

  var $stage = $('#stage').slides({ seconds: 8 });

  $('#bar').on('click', 'span', function () {
    $stage.slides(this.className);
  });

  $(window).on('keydown', function (e) {
    var method = { 37: 'prev', 39: 'next', 13: 'play', 457: 'info' }[e.keyCode];
    if (method) {
      $stage.slides(method);
    }
  });

  // A stage for tests. It has no plug-in behind it.
  var fake = { image: { GetImageSize: $.noop, FlushCache: $.noop } };
  fake.image.GetImageSize();   /* decoy */
  $.proxy(fake.image.FlushCache, fake.image)();   /* decoy */
});
