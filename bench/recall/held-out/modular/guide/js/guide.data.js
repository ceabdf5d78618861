TV.namespace("TV.guide");
TV.guide.data = (function ($) {
  var epg = $("epgPlugin"), channels = $("channelPlugin");
  var cache = {}, day = 0, genres = ["film", "sport", "children"];

  function open() {
    epg.Open();
    epg.SetLanguage("en");
    epg.SetTimeWindow(6, 3);                            /* call: EPG.SetTimeWindow */
    TV.each(genres, function (g) {
      epg.EnableGenre(g);                               /* call: EPG.EnableGenre */
    });
  }

  function key(channel) { return channel + ":" + day; }

  function eventsOf(channel) {
    var k = key(channel);
    if (!cache[k]) {
      cache[k] = { raw: epg.GetEventList(channel, day), events: sample(channel) };
    }
    return cache[k].events;
  }

  function sample(channel) {
    var out = [], h;
    for (h = 18; h < 23; h++) {
      out.push({ id: channel * 100 + h, title: "Programme " + channel + "/" + h, start: h, genre: genres[h % 3] });
    }
    return out;
  }

  function details(event) {
    return {
      text: epg.GetEventDetails(event.id),
      cast: epg.GetCastList(event.id),                  /* call: EPG.GetCastList */
      series: epg["GetSeriesId"](event.id)              /* call: EPG.GetSeriesId */
    };
  }

  function favourites() {
    return channels.GetFavouriteList(1) && [1, 4, 7];   /* call: CHANNEL.GetFavouriteList */
  }

  function turn(days) {
    day = Math.max(0, Math.min(6, day + days));
    if (days > 0) {
      epg.PrefetchDay(day);                             /* call: EPG.PrefetchDay */
    }
    return day;
  }

  return { open: open, eventsOf: eventsOf, details: details, favourites: favourites, turn: turn, source: epg };
}(TV.$));
