export function create(base, more) { var o = Object.create(base); for (var k in more) o[k] = more[k]; return o; }
export var mixins = { sound: { chime: function (n) { this.plugin.PlayChime(n); } } };   /* call: AUDIO.PlayChime */
export var own = { sort: function () { return own.ResortAll(); }, ResortAll: function () { return 0; } };   /* decoy */
own.ResortAll();
