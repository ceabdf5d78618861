// Films of the house. The list comes from the page of the manager, if that is open.
var dev = document.getElementById("dev");
var reel = {
    films: ["rooms", "pool", "bar"],
    at: 0,
    Advance: function () { this.at = (this.at + 1) % this.films.length; return this.films[this.at]; },
    Splice: function (film) { this.films.push(film); },
    Caption: function () { return this.films[this.at]; }
};

function VideoPart() { this.shell = null; }
VideoPart.prototype.OnAttach = function (shell) {
    this.shell = shell;
    this.Present();                                                 /* decoy */
};
VideoPart.prototype.OnDetach = function () { dev.ReleaseSurface(); };       /* call: PLAYER.ReleaseSurface */
VideoPart.prototype.OnKey = function (code) {
    if (code === 39) {
        reel.Advance();                                             /* decoy */
        this.Present();                                             /* decoy */
        return true;
    }
    if (code === 37) { dev.Advance(-1); return true; }              /* call: PLAYER.Advance */
    return false;
};
VideoPart.prototype.Present = function () {
    document.getElementById("caption").innerHTML = reel.Caption();  /* decoy */
    dev.Open(reel.films[reel.at] + ".mp4");
    dev.SetLoop(true);                                              /* call: PLAYER.SetLoop */
    dev.Play();
    this.shell.SetTitle(reel.films[reel.at]);                       /* decoy */
};
reel.Splice("garden");                                              /* decoy */
parent.Shell.Attach("video", new VideoPart());                      /* decoy */
