// The stations of the launch. More come from the server (stations.xml).
var STATIONS = [
    { name: "Harbour FM", url: "http://streams.example/harbour.mp3", genre: "Pop", kbps: 128 },
    { name: "Jazz Cellar", url: "http://streams.example/jazz.aac", genre: "Jazz", kbps: 64 },
    { name: "Klassik Nord", url: "http://streams.example/klassik.mp3", genre: "Classical", kbps: 192 },
    { name: "News 24", url: "http://streams.example/news.aac", genre: "Talk", kbps: 48 },
    { name: "Radio Tropico", url: "http://streams.example/tropico.mp3", genre: "World", kbps: 128 },
    { name: "Night Trance", url: "http://streams.example/trance.mp3", genre: "Dance", kbps: 192 }
];

function Stations_byGenre(genre) {
    var found = [];
    for (var i = 0; i < STATIONS.length; i++) {
        if (STATIONS[i].genre == genre) {
            found.push(STATIONS[i]);
        }
    }
    return found;
}

function Stations_load(done) {
    var xhr = new XMLHttpRequest();
    xhr.open("GET", "http://radio.example/stations.xml", true);
    xhr.onreadystatechange = function () {
        if (xhr.readyState != 4) {
            return;
        }
        if (xhr.status == 200 && xhr.responseXML) {
            var nodes = xhr.responseXML.getElementsByTagName("station");
            for (var i = 0; i < nodes.length; i++) {
                STATIONS.push({ name: nodes[i].getAttribute("name"), url: nodes[i].getAttribute("url"),
                    genre: nodes[i].getAttribute("genre"), kbps: 128 });
            }
        }
        done();
    };
    xhr.send(null);
}
