namespace Tv {
    type Handler = () => void | Promise<void>;

    class Application {
        private at = 0;
        private items: Item[] = [new Rental(1, "Harvest"), new Rental(2, "Two Winters"), new Poster(3, "Soon: Ferry")];
        private handlers: { [code: number]: Handler } = {
            [Key.Enter]: () => this.play(),
            [Key.Red]: async () => {
                const player = await this.later(Plugins.player);
                player.ShowWatermark("preview");               /* call: PLAYER.ShowWatermark */
            },
            [Key.Green]: () => Plugins.clock!.ShowRemainingTime(48),   /* call: CLOCK.ShowRemainingTime */
            [Key.Yellow]: () => {
                for (const rental of Rental.list()) rental.renew(24, ...[12, 12]);
            },
            [Key.Blue]: () => (Plugins["clock"] as any).HideRemainingTime(),   /* call: CLOCK.HideRemainingTime */
            [Key.Stop]: () => { this.stop(Plugins.player); },
        };

        constructor(private readonly root: HTMLElement | null) {
            document.addEventListener("keydown", (event) => this.key(event.keyCode));
        }

        private later<T>(value: T): Promise<T> {
            return new Promise((resolve) => setTimeout(() => resolve(value), 2));
        }

        private play(): void {
            const item = this.items[this.at];
            item.start();
            Plugins.player.Open(item.title);
            Plugins.player.SetTrickPlay(false);                /* call: PLAYER.SetTrickPlay */
            Plugins.player.Play();
        }

        private stop(player: Player): void {
            player.Stop();
            const position = player.GetLastBookmark();         /* call: PLAYER.GetLastBookmark */
            Plugins.clock.LogViewing(position);                /* call: CLOCK.LogViewing */
        }

        private key(code: number): void {
            if (code === Key.Up) this.at = Math.max(0, this.at - 1);
            if (code === Key.Down) this.at = Math.min(this.items.length - 1, this.at + 1);
            const handler = this.handlers[code];
            handler?.();
            this.draw();
        }

        draw(): this {
            if (this.root) {
                this.root.innerHTML = this.items.map((item, i) => (i === this.at ? "> " : "") + item).join("<br>");
            }
            return this;
        }
    }

    new Application(document.getElementById("list")).draw();
}
