(function () {
    var cam = document.getElementById("cam");
    var stick = document.getElementById("stick");
    var hidden = document.getElementById("hidden");
    var places = [
        { name: "Harbour", x: 10, y: 0 },
        { name: "Summit", x: -40, y: 22 },
        { name: "Square", x: 0, y: 0 }
    ];
    var place = 0;

    // The network tells how good a picture can be.
    var network = insertDevice(hidden, "NETWORK", "net");
    network.SetTrafficClass("video");                       /* call: NETWORK.SetTrafficClass */

    var viewer = appendDevice("IMAGEVIEWER");
    viewer.Open();
    viewer.SetSmoothScaling(true);                          /* call: IMAGEVIEWER.SetSmoothScaling */

    hidden.insertAdjacentHTML("beforeend", '<object id="fs" classid="clsid:MORVANE-NAVERTIX-FILESTORE"></object>');
    var files = document.getElementById("fs");

    var fragment = document.createDocumentFragment();
    var clock = document.createElement("object");
    clock.setAttribute("classid", ["clsid:MORVANE", "NAVERTIX", "CLOCK"].join("-"));
    fragment.appendChild(clock);
    hidden.appendChild(fragment);

    function turn(dx, dy) {
        places[place].x += dx;
        places[place].y += dy;
        cam.PanTo(places[place].x);                         /* call: CAMERA.PanTo */
        cam.TiltTo(places[place].y);                        /* call: CAMERA.TiltTo */
    }

    // Pictures that are not kept: the folder is one of ours.
    var folder = { names: [], MakeFolder: function (n) { this.names.push(n); }, ShowThumbnails: function () { return this.names; } };
    folder.MakeFolder("tmp");                               /* decoy */
    folder.ShowThumbnails();                                /* decoy */

    function snapshot() {
        var name = places[place].name + "-" + clock.GetUnixTime() + ".jpg";   /* call: CLOCK.GetUnixTime */
        cam.TakePicture(name);
        files.MakeFolder("webcam");                         /* call: FILESTORE.MakeFolder */
        files.WriteFile("webcam/" + name);
        viewer.ShowImage("webcam/" + name);
    }

    function gallery() {
        var copy = viewer.cloneNode(false);
        document.getElementById("slot").replaceWith(copy);
        copy.ShowThumbnails("webcam");                      /* call: IMAGEVIEWER.ShowThumbnails */
    }

    stick.Open();
    stick.PollAxes(function (n) { turn(n, 0); });           /* call: GAMEPAD.PollAxes */
    cam.Open();
    cam.StartPreview();

    document.onkeydown = function (e) {
        switch (e.keyCode) {
        case 37: turn(-5, 0); break;
        case 39: turn(5, 0); break;
        case 38: turn(0, 5); break;
        case 40: turn(0, -5); break;
        case 13: snapshot(); break;
        case 33: place = (place + 1) % places.length; turn(0, 0); break;
        case 403: if (document.getElementById("slot")) { gallery(); } break;
        case 404: plainObject(); break;
        case 405:
            document.embeds[0].SetCompareMode(1);           /* call: IMAGEVIEWER.SetCompareMode */
            break;
        }
    };

    // A film that is shown when there is no camera. Its element is no device.
    function plainObject() {
        var film = document.createElement("object");
        film.data = "about:blank";
        film.PanTo = film.TiltTo = function () { return film; };
        film.PanTo(3).TiltTo(4);                            /* decoy */
        hidden.appendChild(film);
    }
}());
