var viewer = new FancyViewer("img", 2), keys = new Keyboard("kbd"), fonts = new Fonts("font");
viewer.trace();
viewer.show("a.jpg").show("b.jpg");
keys.beep();
keys.learn("bristol");
fonts.load();
fonts.free();
viewer.el.ExportExif();   /* call: IMAGEVIEWER.ExportExif */
viewer.node().GetHistogram();   /* call: IMAGEVIEWER.GetHistogram */
var Mock = Class.extend({ init: function () { this.el = { Sharpen: function () { }, GetHistogram: function () { } }; } });
var mock = new Mock();
mock.el.Sharpen(1);   /* decoy */
mock.el.GetHistogram();   /* decoy */
var Helper = mixin({}, { run: function (v) { v.el.RotateExact(12); } });   /* call: IMAGEVIEWER.RotateExact */
Helper.run(viewer);
