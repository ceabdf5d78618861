interface Plugin { SetAlphaMap(n: number): void; LockVsync(): void }
interface Options { screen: Plugin & any; alpha?: number }

export function overlay({ screen, alpha = 1 }: Options): void {
  screen.SetAlphaMap(alpha);   /* call: SCREEN.SetAlphaMap */
  (screen as Plugin).LockVsync();   /* call: SCREEN.LockVsync */
  enum Layer { Video = 0, Osd = 1 }
  screen.BindLayer(Layer.Osd);   /* call: SCREEN.BindLayer */
}
export class Fake {
  private own = { ReserveTuner() {} };
  reserve() { this.own.ReserveTuner(); }   /* decoy */
}
