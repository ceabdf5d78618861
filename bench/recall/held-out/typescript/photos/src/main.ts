const enum Method { Print = "PrintImage", Cast = "CastToDevice" }     /* call: IMAGEVIEWER.PrintImage, IMAGEVIEWER.CastToDevice */

class Album {
    // Own printing, as PDF.
    PrintImage(photo: Photo): string { return `pdf:${photo.path}`; }
    static current: View;
}

function share(how: Method, photo: Photo): void {
    const viewer: any = document.getElementById("viewer");
    viewer[how](photo.path);                                /* also: IMAGEVIEWER.PrintImage, IMAGEVIEWER.CastToDevice */
}

(async function main() {
    if (!Files.mounted()) return;
    const photos = Files.list("usb0:/DCIM", Files.Sort.Date);
    const album = new Album();
    document.title = album.PrintImage(photos[0]);           /* decoy */
    Album.current = new GridView(photos);
    Album.current.render();
    document.addEventListener("keydown", (e) => {
        if (e.keyCode === 48) share(Method.Print, photos[0]);
        else if (e.keyCode === 49) share(Method.Cast, photos[0]);
        else {
            Album.current = Album.current.key(e.keyCode);
            Album.current.render();
        }
    });
})();
