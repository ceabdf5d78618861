import { store } from "./store.js";
import Recorder from "./recorder.js";
import { overlay, Fake } from "./overlay.ts";

const recorder = new Recorder(store.rec);
recorder.start(5).then((p) => p.MarkCommercial(1));   /* also: RECORDER.MarkCommercial */
store.player.SetTrickProfile("smooth");   /* call: PLAYER.SetTrickProfile */
overlay({ screen: store.screen, alpha: 0.3 });
const { player, ...others } = store;
player?.GetKeyframeIndex?.();   /* call: PLAYER.GetKeyframeIndex */
others.screen.SetCursorPlane(2);   /* call: SCREEN.SetCursorPlane */
document.addEventListener("keydown", (e) => {
  if (e.keyCode === 415) player.ArmTrigger(1);   /* call: PLAYER.ArmTrigger */
  else if (e.keyCode === 413) recorder.stop();
});
new Fake().reserve();
