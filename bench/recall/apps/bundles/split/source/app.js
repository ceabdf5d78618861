import { platform } from "./platform.js";
import cjs from "./old.cjs";

platform.keyboard.SetTheme("dark");   /* call: KEYBOARD.SetTheme */
const open = async (name) => {
  const page = await (name === "guide" ? import("./guide.js") : import("./search.js"));
  return page.default(platform);
};
(async () => {
  await open("guide");
  const { done } = await open("search");
  done.SetResultRow(3);   /* call: KEYBOARD.SetResultRow */
})();
cjs.attach(platform.broadcast);
cjs.late(() => platform.broadcast.SetNid(3));   /* call: BROADCAST.SetNid */
