declare type TvPlugin = any;

namespace Tv {
    export enum Id { Haptic = "haptic", Pad = "pad" }
    export function find(id: Id): TvPlugin { return document.getElementById(id); }
    export abstract class Device {
        constructor(protected readonly plugin: TvPlugin = find(Id.Haptic)) { this.plugin.SetSlewRate(3); }   /* call: HAPTIC.SetSlewRate */
        abstract run(): Promise<void>;
        get raw(): TvPlugin { return this.plugin; }
    }
    export interface Step { p: TvPlugin; n?: number }
}

class Haptic extends Tv.Device {
    private static instance: Haptic;
    static get(): Haptic { return Haptic.instance || (Haptic.instance = new Haptic()); }
    async run(): Promise<void> {
        this.plugin.Play();
        this.plugin.PreloadEffect("tap");   /* call: HAPTIC.PreloadEffect */
        await Promise.resolve();
        this.plugin.StoreEffect("tap");   /* call: HAPTIC.StoreEffect */
        for (const { p, n = 1 } of this.steps()) p.BlendEffects(n);   /* call: HAPTIC.BlendEffects */
    }
    private *steps(): IterableIterator<Tv.Step> { yield { p: this.plugin }; yield { p: this.plugin, n: 2 }; }
}

class Pad extends Tv.Device {
    private keys: TvPlugin[] = [];
    constructor() { super(Tv.find(Tv.Id.Pad)); this.keys = [...this.keys, this.plugin]; }
    run = async (): Promise<void> => {
        const [first, ...rest] = this.keys;
        first.GetPadCount();
        first.SetTriggerCurve(...[1, 2]);   /* call: GAMEPAD.SetTriggerCurve */
        rest.forEach((k) => k.Open());
        const copy = { ...{ p: first }, x: 1 };
        copy.p?.SwapSticks(true);   /* call: GAMEPAD.SwapSticks */
    };
}

const all: Tv.Device[] = [Haptic.get(), new Pad()];
all.forEach((d) => d.run());
(all[1].raw as TvPlugin)!.ReadPadFirmware();   /* call: GAMEPAD.ReadPadFirmware */
const tag = (s: TemplateStringsArray, p: TvPlugin) => p.NamePad(s[0]);   /* call: GAMEPAD.NamePad */
tag`one${all[1].raw}`;
const fake = { NamePadX(): void {} };
fake.NamePadX();   /* decoy */
