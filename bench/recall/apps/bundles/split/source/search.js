import { platform } from "./platform.js";
class Search {
  constructor(p) { this.kbd = p.keyboard; }
  run() { this.kbd.Show(); this.kbd.SetSuggestions(["a"]); return { done: this.kbd }; }   /* call: KEYBOARD.SetSuggestions */
}
export default (p) => { platform.broadcast.PauseEit(); return new Search(p).run(); };   /* call: BROADCAST.PauseEit */
