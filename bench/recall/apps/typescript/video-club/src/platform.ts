namespace Platform {
    export type Plugin = HTMLObjectElement & { [method: string]: any };

    export function plugin(name: string): Plugin {
        return document.getElementById(name + "Plugin") as Plugin;
    }

    export enum Quality { Low = 1, Medium, High }

    /** What plays a film: the player, its licence and its subtitles. */
    export abstract class Component {
        protected readonly plugin: Plugin;

        constructor(name: string) {
            this.plugin = plugin(name);
        }

        abstract attach(url: string): void;

        detach(): void {
            this.plugin.Close();
        }
    }

    export class Licence extends Component {
        constructor(private server: string) {
            super("drm");
            this.plugin.SetServerAddress(this.server);
            this.plugin.SetCustomHeader("X-Club", "1");     /* call: DRM.SetCustomHeader */
        }

        attach(url: string): void {
            this.plugin.Open();
            this.plugin.AcquireLicense(url);
            this.plugin.SetHdcpLevel(2);                    /* call: DRM.SetHdcpLevel */
        }

        get daysLeft(): number {
            return this.plugin.GetRentalWindow() / 24;      /* call: DRM.GetRentalWindow */
        }
    }

    export class Video extends Component {
        private static instances = 0;

        constructor(public quality: Quality = Quality.Medium) {
            super("player");
            Video.instances++;
        }

        attach(url: string): void {
            const rates = { [Quality.Low]: 800, [Quality.Medium]: 2500, [Quality.High]: 8000 };
            this.plugin.Open(url);
            this.plugin.SetMaxBitrate(rates[this.quality]); /* call: PLAYER.SetMaxBitrate */
        }

        play(rate = 1): void {
            this.plugin.Play();
            this.plugin.SetPlaybackRate(rate);
            this.plugin.SetTrickMode(rate !== 1);           /* call: PLAYER.SetTrickMode */
        }

        preview(...seconds: number[]): void {
            for (const s of seconds) {
                this.plugin.RequestKeyframe(s);             /* call: PLAYER.RequestKeyframe */
            }
        }
    }

    export class Subtitles extends Component {
        attach(url: string): void {
            const { plugin } = this;
            plugin.LoadExternalFile(url.replace(/\.mp4$/, ".srt"));  /* call: SUBTITLE.LoadExternalFile */
            plugin.Show();
        }

        detach(): void {
            this.plugin.Hide();
        }

        style(style: { outline?: boolean, colour?: string }): void {
            this.plugin?.SetOutline?.(style.outline ?? true);        /* call: SUBTITLE.SetOutline */
            this.plugin["SetTextColor"](style.colour || "white");    /* call: SUBTITLE.SetTextColor */
        }
    }
}
