import { platform } from "./platform.js";
export default function guide({ broadcast }) {
  broadcast.CollectEit(platform.keyboard.GetText());   /* call: BROADCAST.CollectEit */
  [broadcast].forEach((b) => b.SetActualOnly(true));   /* call: BROADCAST.SetActualOnly */
  platform.fake.SetNitVersion();   /* decoy */
}
