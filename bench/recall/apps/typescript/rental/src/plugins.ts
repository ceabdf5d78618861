namespace Tv {
    export interface Drm extends HTMLElement {
        AcquireLicense(url: string): number;
        SetRentalPeriod(hours: number): void;
        StartRentalClock(id: number): void;
        RenewLicense(id: number): number;
    }
    export interface Player extends HTMLElement {
        Open(url: string): number;
        Play(): number;
        Stop(): number;
        SetTrickPlay(on: boolean): void;
        ShowWatermark(text: string): void;
        GetLastBookmark(): number;
    }

    export function get<T extends HTMLElement>(id: string): T {
        return <T> document.getElementById(id);
    }

    export enum Key { Up = 38, Down = 40, Enter = 13, Red = 403, Green = 404, Yellow = 405, Blue = 406, Stop = 413 }

    export namespace Plugins {
        export const drm = get<Drm>("drm");
        export const player = get<Player>("player");
        export let clock: any = get("clock");
    }
}
