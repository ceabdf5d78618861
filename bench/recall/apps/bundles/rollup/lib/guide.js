import { own } from "./kit.js";
export function Guide(epg, locale) { this.epg = epg; this.locale = locale; this.locale.SetWeekStart(1); }   /* call: LOCALE.SetWeekStart */
Guide.prototype.load = function (days) {
  for (var i = 0; i < days; i++) this.epg.FetchDay(i);   /* call: EPG.FetchDay */
  this.locale.GetLanguage() ? this.epg.SortBy("time") : own.sort();   /* call: EPG.SortBy */
  return this;
};
Guide.prototype.each = function (fn) { fn(this.epg); return this; };
Guide.prototype.close = function () {
  var e = this.epg, l = this.locale;
  e && e.Close(), e.FreeTiles(), l.UnpinLocale();   /* call: EPG.FreeTiles, LOCALE.UnpinLocale */
};
