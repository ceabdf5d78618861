var album = new Album("holiday");
var obj, i, tmp, n = 0;
var frames_ = [];

function message(text) {
    obj = $("msg");
    obj.innerHTML = text;
}

function init() {
    // the viewer first
    obj = $("viewer");
    obj.Open();
    obj.SetBackground("black");                     /* call: IMAGEVIEWER.SetBackground */
    obj.SetDecoderCache(4);                         /* call: IMAGEVIEWER.SetDecoderCache */

    // then the album
    obj = album;
    for (i = 0; i < 6; i++) {
        obj.Insert("img" + i + ".jpg");             /* decoy */
    }
    obj.Sort();                                     /* decoy */

    // and the frames
    for (i = 0; i < 3; i++) {
        obj = new Frame("c" + i);
        obj.Fill(album.photos[i]);                  /* decoy */
        obj.Paint();                                /* decoy */
        frames_[i] = obj;
    }

    obj = $("camera");
    obj.Open();
    obj.SetFlash(1);                                /* call: CAMERA.SetFlash */
    message(album.Stamp());                         /* decoy */
}

function rotate(by) {
    tmp = frames_[n];
    tmp.Rotate(by);                                 /* decoy */
    tmp = $("viewer");
    tmp.RotateImage(by);
    tmp.MirrorImage(by < 0);                        /* call: IMAGEVIEWER.MirrorImage */
    tmp = null;
}

function snap() {
    var it = $("camera");
    it.Focus("auto");                               /* call: CAMERA.Focus */
    var file = it.TakePicture();
    it = album;
    it.Insert(file + ".jpg");                       /* decoy */
    message(it.Stamp());                            /* decoy */
    it = $("camera");
    it.Stamp(new Date().toString());                /* call: CAMERA.Stamp */
    it = frames_[0];
    it.Fill("new");                                 /* decoy */
}

// shows one thing after the other in the same place
function present(thing, kind) {
    if (kind == "album") {
        thing.Crop(0, 5);                           /* decoy */
        thing = $("viewer");
        thing.Crop(0, 0, 640, 360);                 /* call: IMAGEVIEWER.Crop */
    } else if (kind == "frame") {
        thing.Fill(kind);                           /* decoy */
        thing.Rotate(90);                           /* decoy */
    } else {
        thing.ShowImage(album.photos[n]);
        thing.SetFadeTime(300);                     /* call: IMAGEVIEWER.SetFadeTime */
    }
}

function erase() {
    with (album) {
        Erase(n);                                   /* decoy */
    }
    var viewer = new Frame("c2");                   // the frame is the viewer of this page
    viewer.Fill("");                                /* decoy */
    viewer.Rotate(-90);                             /* decoy */
    $("viewer").Erase();                            /* call: IMAGEVIEWER.Erase */
}

function done() {
    obj = $("camera");
    obj.Close();
}

document.onkeydown = function (e) {
    e = e || window.event;
    switch (e.keyCode) {
    case 37: n = (n + 2) % 3; rotate(-90); break;
    case 39: n = (n + 1) % 3; rotate(90); break;
    case 13: snap(); break;
    case 403: present(album, "album"); break;
    case 404: present(frames_[n], "frame"); break;
    case 405: present($("viewer"), "image"); break;
    case 406: erase(); break;
    }
};
