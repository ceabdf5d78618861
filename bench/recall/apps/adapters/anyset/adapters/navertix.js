Adapters.add('navertix', function () {
    return !!document.getElementById('nvPlayer');
}, function () {
    var player = document.getElementById('nvPlayer');
    var audio = document.getElementById('nvAudio');
    var display = document.getElementById('nvDisplay');
    return {
        vendor: 'navertix',
        open: function (url) {
            player.Open(url);
            player.SetBufferSize(8192);                 /* call: PLAYER.SetBufferSize */
        },
        play: function () { player.Play(); },
        rate: function (n) {
            if (n > 4) {
                player.TrickPlay(n);                    /* call: PLAYER.TrickPlay */
            } else {
                player.SetPlaybackRate(n);
            }
        },
        sound: function (name) {
            audio.SelectPreset(name);                   /* call: AUDIO.SelectPreset */
            audio.SetOutputMode('stereo');
        },
        picture: function (width, height) {
            display.SetVideoWindow(0, 0, width, height);    /* call: DISPLAY.SetVideoWindow */
        },
        info: function () {
            return player.GetStreamInfo();              /* call: PLAYER.GetStreamInfo */
        },
        close: function () {
            player.Close();
            display.ClearVideoWindow();                 /* call: DISPLAY.ClearVideoWindow */
        }
    };
});
