var Widget = Class.extend({
  init: function (id) { this.el = document.getElementById(id); this.setup(); },
  setup: function () { this.el.BaseSetup(); },   /* call: PLAYER.BaseSetup */
  play: function (n) { return this.el.PlayRaw(n); }   /* call: PLAYER.PlayRaw */
});
var Fancy = Widget.extend({
  init: function (id) { this._super(id); this.extra = this.el; this.extra.FancySetup(); },   /* call: PLAYER.FancySetup */
  play: function () { this._super(2); this.el.PlayFancy(); }   /* call: PLAYER.PlayFancy */
});
new Fancy('pl').play();
function Base(el) { this.el_ = el; }
Base.prototype.getEl = function () { return this.el_; };
Base.prototype.dispose = function () { this.getEl().FreeGlyphs(); };   /* call: SUBTITLE.FreeGlyphs */
function Sub(el) { Base.call(this, el); }
inherits(Sub, Base);
Sub.prototype.dispose = function () { Sub.superClass_.dispose.call(this); this.getEl().FreeRegions(); };   /* call: SUBTITLE.FreeRegions */
new Sub(document.getElementById('sub')).dispose();
var Page = YLang.createClass({
  Mixins: [{ hold: function () { this.device.HoldPage(); } }],   /* call: TELETEXT.HoldPage */
  init: function (d) { this.device = d; },
  next: function () { this.hold(); this.device.NextSubcode(); return this; }   /* call: TELETEXT.NextSubcode */
});
var Sport = YLang.createClass({ Extends: Page, init: function () { Page.prototype.init ? this.boot() : 0; this.device.SportPage(); },   /* call: TELETEXT.SportPage */
  boot: function () { this.device = document.getElementById('ttx'); } });
new Page(document.getElementById('ttx')).next();
new Sport().next();
var proto = { make: function (el) { var o = Object.create(this); o.el = el; return o; }, go: function () { this.el.GoProto(); } };   /* call: SUBTITLE.GoProto */
proto.make(document.getElementById('sub')).go();
var Singleton = (function () { var inst; function Make() { this.dev = document.getElementById('ttx'); }
  return { get: function () { return inst || (inst = new Make()); } }; })();
Singleton.get().dev.ReadPacket(26);   /* call: TELETEXT.ReadPacket */
var util = { borrow: function () { return Base.prototype.getEl.call({ el_: document.getElementById('pl') }); } };
util.borrow().BorrowDecoder();   /* call: PLAYER.BorrowDecoder */
function Temp() {} Temp.prototype = { el: { PlayRaw: function () {} }, play: function () { this.el.PlayRaw(); } };   /* decoy */
new Temp().play();
var Mod = {}; Mod.a = Mod.b = document.getElementById('pl'); Mod.b.MirrorOut(), Mod['a'].MirrorIn();   /* call: PLAYER.MirrorOut, PLAYER.MirrorIn */
