abstract class View {
    protected readonly root: HTMLElement = document.getElementById("root")!;
    constructor(protected photos: Photo[]) { }
    abstract render(): void;
    public key(code: number): View { return this; }
}

class Viewer {
    private static _instance: Viewer;
    private readonly plugin: any = document.getElementById("viewer");
    static get instance(): Viewer { return this._instance || (this._instance = new Viewer()); }

    show(photo: Photo): void {
        this.plugin.ShowImage(photo.path);
        if (photo.rotation) this.plugin.RotateImage(photo.rotation);
        this.plugin.PreloadNeighbours?.(2);                 /* call: IMAGEVIEWER.PreloadNeighbours */
    }

    kenBurns(on: boolean): void {
        this.plugin.SetKenBurns(on);                        /* call: IMAGEVIEWER.SetKenBurns */
    }

    filter(...names: string[]): void {
        this.plugin.ApplyFilter(...names);                  /* call: IMAGEVIEWER.ApplyFilter */
    }

    with<T>(work: (plugin: any) => T): T { return work(this.plugin); }
}

class GridView extends View {
    private index = 0;
    render(): void {
        this.root.innerHTML = this.photos.map((p, i) => `<span class="${i === this.index ? "on" : ""}">${p.title}</span>`).join(" ");
    }
    key(code: number): View {
        switch (code) {
            case 37: this.index = Math.max(0, this.index - 1); break;
            case 39: this.index = Math.min(this.photos.length - 1, this.index + 1); break;
            case 13: return new PhotoView(this.photos, this.index);
            case 405: Files.remove(this.photos[this.index]); break;
        }
        return this;
    }
}

class PhotoView extends View {
    constructor(photos: Photo[], private index: number) { super(photos); }

    render(): void {
        const photo = this.photos[this.index];
        Viewer.instance.show(photo);
        Files.metadata(photo).then(({ exif }) => { this.root.title = exif; });
    }

    key(code: number): View {
        const viewer = Viewer.instance, photo = this.photos[this.index];
        switch (code) {
            case 403: photo.rotation = (photo.rotation + 90) % 360; break;
            case 404: viewer.filter("sepia", "grain"); break;
            case 457: Files.remove(photo); return new GridView(this.photos.filter((p) => p !== photo));
            case 406: viewer.with((plugin) => plugin.CropToFaces(photo.path)); break;     /* call: IMAGEVIEWER.CropToFaces */
            case 415: viewer.kenBurns(true); viewer.with((p) => p.StartSlideshow(5)); break;
            case 461: return new GridView(this.photos);
        }
        return this;
    }
}
