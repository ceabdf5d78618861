function Model() {
  var self = this;
  self.port = document.getElementById('ser');
  self.level = ko.observable(3);
  self.list = ko.observableArray([{ dev: document.getElementById('chn') }]);
  self.text = ko.computed(function () { return self.port.Compute9(self.level()); });   /* call: SERIALPORT.Compute9 */
  self.rw = ko.pureComputed({ read: function () { return this.port.ReadRaw9(); }, write: function (v) { this.port.WriteRaw9(v); }, owner: self });   /* call: SERIALPORT.ReadRaw9, SERIALPORT.WriteRaw9 */
  self.level.subscribe(function (v) { this.port.LevelRaw(v); }, self);   /* call: SERIALPORT.LevelRaw */
  self.current = ko.observable();
  self.current.subscribe(function (p) { p.CurrentRaw(); });   /* call: CHANNEL.CurrentRaw */
}
Model.prototype.send = function (data, ev) { data.port.SendBreak(); this.current(this.list()[0].dev); this.rw(this.rw()); };   /* call: SERIALPORT.SendBreak */
var m = new Model(); ko.applyBindings(m);
ko.utils.arrayForEach(m.list(), function (x) { x.dev.EachRaw(); });   /* call: CHANNEL.EachRaw */
m.level(4); setTimeout(function () { document.getElementById('b').click(); document.getElementById('i').focus(); }, 50);
