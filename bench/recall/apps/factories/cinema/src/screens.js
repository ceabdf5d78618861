var FILMS = [
    { id: 11, title: "The Long Ferry", url: "http://vod.example/11.mpd", hd: true },
    { id: 12, title: "Salt", url: "http://vod.example/12.mpd", hd: false },
    { id: 13, title: "Orchard", url: "http://vod.example/13.mpd", hd: true }
];

function makeShelf(playback, subtitles) {
    var at = 0;
    var screen = {
        draw: function () {
            document.getElementById("shelf").innerHTML = FILMS.map(function (film, i) {
                return (i === at ? "<b>" + film.title + "</b>" : film.title);
            }).join(" | ");
        },
        key: function (code) {
            if (code === 37) { at = (at + FILMS.length - 1) % FILMS.length; }
            if (code === 39) { at = (at + 1) % FILMS.length; }
            if (code === 13 && playback.start(FILMS[at])) {
                subtitles.on("http://vod.example/" + FILMS[at].id + ".vtt");
            }
            if (code === 413) {
                playback.stop();
                subtitles.off();
            }
            screen.draw();
        }
    };
    return screen;
}

app.register("shelf", ["playback", "subtitles"], makeShelf);
