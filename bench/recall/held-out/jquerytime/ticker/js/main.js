var Headlines = {
  alerts: false,
  // History of what was shown, has its own PinMessage.
  history: {
    items: [],
    PinMessage: function (t) { this.items.unshift(t); },
    SetCaption: function (t) { this.caption = t; }
  }
};

$(document).ready(function () {
  var $note = $('#pluginNotification'), $text = $('#pluginTeletext'), locale = $('#pluginLocale').get(0);

  $('body').addClass('lang-' + locale.GetLanguage());
  locale.GetRegionCode();                               /* call: LOCALE.GetRegionCode */
  $('.clock').text(locale.FormatNow('HH:mm'));          /* call: LOCALE.FormatNow */

  // $note[0].PlayChime(); too loud, says marketing     /* decoy */
  $note[0].SetCorner('bottom-right');                   /* call: NOTIFICATION.SetCorner */
  $note.tv('SetIcon', 'img/news.png').tv('SetBadgeCount', 3);   /* call: NOTIFICATION.SetIcon, NOTIFICATION.SetBadgeCount */
  $note.tv('ClearMessages');

  $('#news').newsTicker({
    delay: 90,
    onShow: function (index, $item) {
      Headlines.history.PinMessage($item.text());       /* decoy */
      $text[0].PreloadPage($item.data('page'));         /* call: TELETEXT.PreloadPage */
      if (Headlines.alerts) {
        $.notice($item.text(), { sticky: true });
      }
    }
  });

  function refresh() {
    $('#news').addClass('loading');
    $.ajax({
      url: 'data/feed.json',
      dataType: 'json',
      success: function (feed) {
        $('#news').newsTicker('add', feed.items).removeClass('loading');
        $('.tvplugin').filter('#pluginTeletext').each(function () {
          this.SetUpdateStamp(feed.updated);            /* call: TELETEXT.SetUpdateStamp */
        });
      },
      error: function () {
        $('#detail').show().text('The news cannot be loaded. Try SetCorner("x") later.');    /* decoy */
      }
    });
  }

  function showTeletext() {
    var page = $('#news li.current').data('page');
    $text.each(function (i, el) {
      el.Open();
      el.ShowPage(page);
      el.ShowSubpage(page, 1);                          /* call: TELETEXT.ShowSubpage */
    });
    if ($text.tvGet('HasFastext')) {                    /* call: TELETEXT.HasFastext */
      $('#footer').addClass('fastext');
    }
  }

  $('#footer').delegate('span', 'click', function () {
    var action = { red: refresh, green: showTeletext, blue: toggleAlerts }[this.className];
    if (action) { action(); }
  });

  function toggleAlerts() {
    Headlines.alerts = !Headlines.alerts;
    Headlines.history.SetCaption(Headlines.alerts);     /* decoy */
    $.each({ SetCaption: 'News', SetPriority: 2 }, function (method, value) {   /* call: NOTIFICATION.SetCaption, NOTIFICATION.SetPriority */
      $note[0][method](value);                          /* also: NOTIFICATION.SetCaption, NOTIFICATION.SetPriority */
    });
  }

  $(document).keydown(function (e) {
    switch (e.keyCode) {
      case 403: refresh(); break;
      case 404: showTeletext(); break;
      case 406: toggleAlerts(); break;
      case 37: case 39: $('#news').newsTicker('next'); break;
      case 461: $('object[classid*=TELETEXT]')[0].Close(); $('#detail').hide(); break;
    }
  });
  // Advertisements are pushed by the editors, with the way they are shown.
  function advertise() {
    $.getJSON('http://news.example/ads.json', function (ads) {
      $.each(ads, function (i, ad) {
        $note[0][ad.display](ad.text);                  /* undecidable: NOTIFICATION */
      });
    });
  }
  setInterval(advertise, 400);

  $(window).bind('unload', function () { $note.tv('ClearMessages'); });
});
