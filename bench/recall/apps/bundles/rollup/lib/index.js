import { Guide } from "./guide.js";
import { create, mixins } from "./kit.js";

export function plug(id) { return document.getElementById(id); }
export function start(options) {
  var audio = options.audio;
  audio.GetVolume();
  audio.SetDuckLevel(-12);   /* call: AUDIO.SetDuckLevel */
  var guide = new Guide(plug("epg0"), plug("loc0"));
  guide.load(7).each(function (p) { p.WarmThumbnails(); });   /* call: EPG.WarmThumbnails */
  var widget = create(mixins.sound, { plugin: audio });
  widget.chime("ok");
  widget.plugin.GetToneCurve();   /* call: AUDIO.GetToneCurve */
  setTimeout(function () { guide.close(); }, 5);
  if (typeof options.debug === "undefined") audio.EnableMeter(false);   /* call: AUDIO.EnableMeter */
}
