abstract class Screen_ {
    constructor(protected root: HTMLElement) {}
    abstract draw(): string;
    key(code: number): boolean { return false; }
    show(): void { this.root.innerHTML = this.draw(); }
}

class ListScreen extends Screen_ {
    private index = 0;
    private films: Film[] = [];

    constructor(root: HTMLElement, store: Store<Film>, private open: (film: Film) => void) {
        super(root);
        store.observe(films => { this.films = films; this.show(); });
    }

    draw(): string {
        return this.films.map((film, i) => `<p class="${i === this.index ? "on" : ""}">${film.title}</p>`).join("");
    }

    key(code: number): boolean {
        switch (code) {
            case 38: this.index = Math.max(0, this.index - 1); break;
            case 40: this.index = Math.min(this.films.length - 1, this.index + 1); break;
            case 13: this.open(this.films[this.index]); return true;
            default: return false;
        }
        this.show();
        return true;
    }
}

class PlayScreen extends Screen_ {
    private components: Platform.Component[];
    private video = new Platform.Video(Platform.Quality.High);
    private subtitles = new Platform.Subtitles("subtitle");
    private licence = new Platform.Licence("https://licence.example");

    constructor(root: HTMLElement) {
        super(root);
        this.components = [this.licence, this.video, this.subtitles];
    }

    play(film: Film): void {
        this.components.forEach(c => c.attach(film.url));
        this.video.play();
        this.show();
    }

    draw(): string {
        return `<p>${this.licence.daysLeft} days</p>`;
    }

    key(code: number): boolean {
        const actions: { [code: number]: () => void } = {
            413: () => this.components.forEach(c => c.detach()),
            417: () => this.video.play(4),
            412: () => this.video.preview(10, 20, 30),
            403: () => this.subtitles.style({ colour: "yellow" }),
        };
        if (actions[code]) {
            actions[code]();
            return true;
        }
        return false;
    }
}
