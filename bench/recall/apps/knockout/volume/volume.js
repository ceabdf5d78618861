function VolumeModel() {
    var self = this;
    self.plugin = ko.observable(document.getElementById("a"));
    self.hdmi = document.getElementById("h");
    self.inputs = ko.observableArray([self.hdmi]);
    self.level = ko.computed(function () { return self.plugin().GetMixerLevel(0); });   /* call: AUDIO.GetMixerLevel */
    self.louder = function () { self.plugin().VolumeUp(); self.plugin().KickCompressor(); };   /* call: AUDIO.KickCompressor */
    self.chosen = ko.observable();
    self.chosen.subscribe(function (p) { p.SendCecRaw([4]); });   /* call: HDMI.SendCecRaw */
    self.safe = ko.pureComputed({
        read: function () { return 1; },
        write: function (v) { self.plugin().SetLimiter(v); }   /* call: AUDIO.SetLimiter */
    });
}
ko.bindingHandlers.tv = {
    init: function (element, valueAccessor) { ko.unwrap(valueAccessor()).SpoofEdid("x"); },   /* call: HDMI.SpoofEdid */
    update: function (element, valueAccessor) { valueAccessor().SetHdcpMode(2); }   /* call: HDMI.SetHdcpMode */
};
var model = new VolumeModel();
ko.applyBindings(model);
model.chosen(model.hdmi);
model.safe(-3);
ko.utils.arrayForEach(model.inputs(), function (i) { i.TrainLink(); });   /* call: HDMI.TrainLink */
model.inputs.push({ TrainLink: function () { } });
model.inputs()[1].TrainLink();   /* decoy */
ko.observable({ SetLimiter: function () { } })().SetLimiter(1);   /* decoy */
model.plugin.peek().SetCrossfeed(0.3);   /* call: AUDIO.SetCrossfeed */
ko.tasks.schedule(function () { model.hdmi.ResetPhy(); });   /* call: HDMI.ResetPhy */
