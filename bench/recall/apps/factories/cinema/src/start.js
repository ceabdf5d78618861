window.onload = function () {
    var shelf = app.get("shelf");
    shelf.draw();
    document.onkeydown = function (e) {
        shelf.key(e.keyCode);
        if (e.keyCode === 406) {
            app.get("license").forget();
        } else if (e.keyCode === 405) {
            app.get("player").ShowStatistics(true);            /* call: PLAYER.ShowStatistics */
        } else if (e.keyCode === 404) {
            app.get("fake").SetHdcpLevel(0);                   /* decoy */
            app.get("fake").SetClientCertificate(null);        /* decoy */
            app.get("testPlayback");
        } else if (e.keyCode === 403) {
            // An element may also be made by hand, where the container is not there yet.
            var power = document.createElement("object");
            power.setAttribute("classid", "clsid:MORVANE-NAVERTIX-POWER");
            document.body.appendChild(power).KeepAwake(7200);  /* call: POWER.KeepAwake */
        }
    };
};
