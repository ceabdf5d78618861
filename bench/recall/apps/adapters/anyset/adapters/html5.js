Adapters.add('html5', function () { return true; }, function () {
    var video = document.getElementById('html5');

    // Sound through the Web Audio interface, as far as there is one.
    function Mixer() { this.presets = { film: 1.2, talk: 0.8 }; this.gain = 1; }
    Mixer.prototype.SelectPreset = function (name) { this.gain = this.presets[name] || 1; };
    Mixer.prototype.SetGainNode = function (value) { this.gain = value; };

    var mixer = new Mixer();
    return {
        vendor: 'html5',
        open: function (url) { video.src = url; },
        play: function () {
            mixer.SetGainNode(mixer.gain);              /* decoy */
        },
        rate: function (n) { video.playbackRate = n; },
        sound: function (name) { mixer.SelectPreset(name); },       /* decoy */
        picture: function (width, height) { video.width = width; video.height = height; },
        info: function () { return { width: video.videoWidth }; },
        close: function () { video.removeAttribute('src'); }
    };
});
