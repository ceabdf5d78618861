var Base = {
  setup: function (sId) { this.oPlugin = document.getElementById(sId); return this; },
  plugin: function () { return this.oPlugin; },
  each: function (aNames, fn) { for (var i = 0; i < aNames.length; i++) fn.call(this, aNames[i]); }
};
var Drm = Object.create(Base);
Drm.open = function (sUrl) {
  this.oPlugin.Open();
  this.oPlugin.SetHeartbeat(sUrl);   /* call: DRM.SetHeartbeat */
  var _this = this;
  this.each(['a'], function (s) { this.oPlugin.PreloadKey(s); _this.oPlugin.TagKey(s); });   /* call: DRM.PreloadKey, DRM.TagKey */
};
var Sec = {
  __proto__: Base,
  lock() { super.plugin().LockBoot(); return this; },   /* call: SECURITY.LockBoot */
  get p() { return this.oPlugin; }
};
var d = Object.create(Drm).setup('oDrm');
var s = Object.create(Sec).setup('oSec');
d.open('http://l');
d.plugin().GetSession();   /* call: DRM.GetSession */
s.lock().p.SetLockdown(1);   /* call: SECURITY.SetLockdown */

function Service(oDep) {
  if (!(this instanceof Service)) { return new Service(oDep); }
  this.m_oDep = oDep;
  Service.last = this;
}
Service.prototype.run = function () { this.m_oDep.oPlugin.RunSelfTest(); return this; };   /* call: DRM.RunSelfTest */
Service.create = function (o) { return Service(o).run(); };
Service.create(d).m_oDep.oPlugin.DumpTrace();   /* call: DRM.DumpTrace */
Service.last.m_oDep.plugin().SetAntiRollback(2);   /* call: DRM.SetAntiRollback */

function Legacy() { return { el: document.getElementById('oSec'), go: function () { this.el.ScanMemory(); } }; }   /* call: SECURITY.ScanMemory */
new Legacy().go();
var copy = {};
for (var k in s) { copy[k] = s[k]; }
copy.oPlugin.CopyVault();   /* call: SECURITY.CopyVault */
Object.setPrototypeOf(copy, { oPlugin: { CopyVault: function () {} } });
Object.getPrototypeOf(copy).oPlugin.CopyVault();   /* decoy */
Service.prototype.m_oDep = { oPlugin: { DumpTrace: function () {} } };
Object.create(Service.prototype).m_oDep.oPlugin.DumpTrace();   /* decoy */
String.prototype.plugin = function () { return document.getElementById(String(this)); };
'oSec'.plugin().GetAttestation();   /* call: SECURITY.GetAttestation */
