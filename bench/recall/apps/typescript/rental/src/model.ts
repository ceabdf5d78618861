namespace Tv {
    export abstract class Item {
        protected constructor(public readonly id: number, public title: string) { }
        abstract start(): void;
        toString(): string { return `${this.id}. ${this.title}`; }
    }

    export class Rental extends Item {
        private static all: Rental[] = [];
        private left = 48;
        constructor(id: number, title: string, private drm: Drm = Plugins.drm) {
            super(id, title);
            Rental.all.push(this);
        }
        start(): void {
            this.drm.AcquireLicense("https://rental.example/" + this.id);
            this.drm.SetRentalPeriod(this.left);               /* call: DRM.SetRentalPeriod */
            this.drm.StartRentalClock(this.id);                /* call: DRM.StartRentalClock */
        }
        renew(...hours: number[]): void {
            this.left += hours.reduce((a, b) => a + b, 0);
            const { drm, id } = this;
            drm.RenewLicense(id);                              /* call: DRM.RenewLicense */
        }
        static *list(): IterableIterator<Rental> {
            for (const rental of Rental.all) yield rental;
        }
    }

    // For the shop window: it neither rents nor plays.
    export class Poster extends Item {
        constructor(id: number, title: string) { super(id, title); }
        start(): void { this.ShowWatermark(this.title); }      /* decoy */
        ShowWatermark(text: string): void { this.title = text; }
    }
}
