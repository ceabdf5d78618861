var Plugin = Class.extend({
    init: function (id) { this.el = document.getElementById(id); this.setup(); },
    setup: function () { },
    trace: function () { this.el.SetTraceLevel(3); }   /* call: IMAGEVIEWER.SetTraceLevel */
});
var Viewer = Plugin.extend({
    init: function (id, zoom) { this._super(id); this.zoom = zoom; this.el.SetDecodeThreads(2); },   /* call: IMAGEVIEWER.SetDecodeThreads */
    setup: function () { this.el.WarmCache(); },   /* call: IMAGEVIEWER.WarmCache */
    show: function (name) { this.el.ShowImage(name); this.el.Sharpen(0.5); return this; },   /* call: IMAGEVIEWER.Sharpen */
    node: function () { return this.el; }
});
var FancyViewer = Viewer.extend({
    show: function (name) { this._super(name); this.el.CrossFade(name, -1); return this; }   /* call: IMAGEVIEWER.CrossFade */
});
var Loud = {
    beep: function () { this.el.ClickSound("tick"); },   /* call: KEYBOARD.ClickSound */
    learn: function (word) { this.el.AddToDictionary(word); }   /* call: KEYBOARD.AddToDictionary */
};
var Keyboard = Plugin.extend(mixin({
    setup: function () { this.el.Show(); this.el.SetHapticPulse(10); }   /* call: KEYBOARD.SetHapticPulse */
}, Loud));

function Fonts(id) { Fonts.superclass.constructor.call(this, id); this.handle.HintGlyphs(true); }   /* call: FONT.HintGlyphs */
function Base(id) { this.handle = document.getElementById(id); }
Base.prototype.free = function () { this.handle.PurgeAtlas(); };   /* call: FONT.PurgeAtlas */
inherits(Fonts, Base);
Fonts.prototype.load = function () { this.handle.LoadFont("a"); this.handle.SubsetFont("abc"); };   /* call: FONT.SubsetFont */
