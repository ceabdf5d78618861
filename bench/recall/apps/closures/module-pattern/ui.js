TV.ui = (function (media, $) {
    var counter = (function () { var n = 0; return function () { return ++n; }; })();
    var fake = { SeekExact: function () { return 0; }, GetSerial: function () { return 0; } };
    return {
        start: function () {
            media.init().play("a.mp4");
            media.subtitles(true);
            media.seek(10);
            media.raw().GetCodecList();   /* call: PLAYER.GetCodecList */
            media.rawSubs().GetFontCache();   /* call: SUBTITLE.GetFontCache */
            var p = media.raw();
            p.SetAspectHint("4:3");   /* call: PLAYER.SetAspectHint */
            fake.SeekExact(1);   /* decoy */
            fake.GetSerial();   /* decoy */
            $.get("playerObj").GetDecoderLoad();   /* call: PLAYER.GetDecoderLoad */
            this.later(media);
        },
        later: function (m) {
            var self = this;
            setTimeout(function () { self.tick(m.raw(), counter()); }, 1);
        },
        tick: function (q, n) { q.SetWatermark("n" + n); }   /* call: PLAYER.SetWatermark */
    };
}(TV.media, TV.plug));
