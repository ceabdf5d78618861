tv.declare("home.Plugin", [], {
  constructor: function (opts) { this.node = document.getElementById((opts || { id: "pw" }).id); },
  boot: function () { this.node.MarkBoot(1); }   /* call: POWER.MarkBoot */
});
tv.declare("home.Dimmable", [], {
  dim: function (n) { this.node.DimZone(n, -0.5); }   /* call: POWER.DimZone */
});
tv.declare("home.Power", [home.Plugin, home.Dimmable], {
  boot: function () { this.inherited(); this.node.RailCheck("5v"); return this; },   /* call: POWER.RailCheck */
  off: function () { this.node.SetStandby(); this.node.CutRail({ soft: true }); }   /* call: POWER.CutRail */
});
tv.declare("home.Light", [home.Plugin], {
  boot: function () { this.inherited.apply(this, arguments); this.node.SetLuxTable([1]); }   /* call: LIGHTSENSOR.SetLuxTable */
});
var p = new home.Power({ id: "pw" });
p.boot().dim(3);
p.off();
p.node.GetRailMap();   /* call: POWER.GetRailMap */
var l = new home.Light({ id: "lg" });
l.boot();
tv.trait({ glow: function () { this.node.GlowFor(2); } })(home.Light.prototype);   /* call: LIGHTSENSOR.GlowFor */
l.glow();
var singleton = home.Light.instance || (home.Light.instance = l);
singleton.node.GetLuxRaw();   /* call: LIGHTSENSOR.GetLuxRaw */
home.Power.prototype.sleep = function () { return this.node.DeepSleep(); };   /* call: POWER.DeepSleep */
p.sleep();
var Old = function () {};
Old.prototype = new home.Power({ id: "pw" });
Old.prototype.constructor = Old;
new Old().node.GetWakeSource();   /* call: POWER.GetWakeSource */
tv.declare("home.Fake", [home.Dimmable], { node: { DimZone: function () {}, GlowFor: function () {} }, glow: function () { this.node.GlowFor(1); } });   /* decoy */
new home.Fake().dim(1); new home.Fake().glow();
