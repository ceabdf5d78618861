function LicenseService(drm) {
    this.drm = drm;
    this.known = {};
}
LicenseService.prototype = {
    acquire: function (film) {
        if (this.known[film.id]) {
            return true;
        }
        this.drm.SetServerAddress("https://license.example/");
        this.drm.SetCustomData("film=" + film.id);             /* call: DRM.SetCustomData */
        this.known[film.id] = this.drm.AcquireLicense(film.url) > 0;
        return this.known[film.id];
    },
    forget: function () {
        this.known = {};
        this.drm.PurgeExpiredLicenses();                       /* call: DRM.PurgeExpiredLicenses */
    }
};

function makePlayback(player, license) {
    var film = null;
    return {
        start: function (next) {
            film = next;
            if (!license.acquire(film)) {
                return false;
            }
            player.SetHdcpLevel(2);                            /* call: PLAYER.SetHdcpLevel */
            player.SetStartBitrate(film.hd ? 6000000 : 2000000);   /* call: PLAYER.SetStartBitrate */
            player.Open(film.url);
            player.Play();
            return true;
        },
        stop: function () {
            player.Stop();
            player.ReportPlaybackSession(film && film.id);     /* call: PLAYER.ReportPlaybackSession */
        }
    };
}

function makeSubtitles(settings) {
    settings = settings || {};
    return function (subtitle) {
        subtitle.SetFontSize(settings.size || 28);
        subtitle.SetEdgeStyle(settings.edge || "raised");      /* call: SUBTITLE.SetEdgeStyle */
        return {
            on: function (url) {
                subtitle.AttachTrack(url);                     /* call: SUBTITLE.AttachTrack */
                subtitle.Show();
            },
            off: function () { subtitle.Hide(); }
        };
    };
}

app.register("license", ["drm"], function (drm) { return new LicenseService(drm); })
   .register("playback", ["player", "license"], makePlayback)
   .register("testPlayback", ["fake", "license"], makePlayback)
   .register("subtitles", ["subtitle"], makeSubtitles({ size: 32 }));
