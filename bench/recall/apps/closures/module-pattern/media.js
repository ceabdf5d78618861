TV.media = (function (plug) {
    var player, subs, state = 0;

    function init() {
        player = plug.get("playerObj");
        subs = plug.get("subObj");
        player.SetBufferSize(4096);   /* call: PLAYER.SetBufferSize */
        return api;
    }
    function play(url) {
        player.Open(url);
        player.SetDrmHeader("x: y");   /* call: PLAYER.SetDrmHeader */
        player.Play();
        return watch(function (p) { p.ReportStall(); });   /* call: PLAYER.ReportStall */
    }
    function watch(cb) { cb(player); state++; return state; }
    function subtitles(on) {
        var change = on ? function () { subs.LoadSidecar("a.srt"); } : function () { subs.Hide(); };   /* call: SUBTITLE.LoadSidecar */
        change();
        (function () { subs.SetOutline(2); }());   /* call: SUBTITLE.SetOutline */
    }
    var api = {
        init: init, play: play, subtitles: subtitles,
        raw: function () { return player; },
        rawSubs: function () { return subs; },
        seek: function (t) { player.SeekTo(t); player.SeekExact(t, -0.5); }   /* call: PLAYER.SeekExact */
    };
    return api;
}(TV.plug));
