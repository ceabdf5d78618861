var Device = Backbone.Model.extend({
  defaults: { state: 0 },
  initialize: function (attrs, options) {
    this.plugin = options.plugin;
    this.plugin.ArmWatchdog(60);   /* call: POWER.ArmWatchdog */
    this.listenTo(this, "change:state", this.apply);
  },
  apply: function (model, state) { model.plugin.GateRail(state); },   /* call: POWER.GateRail */
  sync: function () { this.plugin.CommitPolicy(this.toJSON()); }   /* call: POWER.CommitPolicy */
});
var Clock = Backbone.Model.extend({
  initialize: function () { this.set("plugin", document.getElementById("clock")); },
  tick: function () { return this.get("plugin").GetLeapTable(); }   /* call: CLOCK.GetLeapTable */
});
var RoomView = Backbone.View.extend({
  el: "#app",
  events: { "click .wake": "wake", "keydown": "key" },
  initialize: function (o) {
    _.bindAll(this, "late");
    this.clock = o.clock;
    _.defer(this.late);
    this.model.on("ring", function (n) { this.plugin.RingChime(n); }, this.model);   /* call: POWER.RingChime */
  },
  wake: function () { this.model.plugin.WakeUp(); this.model.plugin.WakeOnCec(1); },   /* call: POWER.WakeOnCec */
  late: function () { this.clock.get("plugin").SlewTime(-5); },   /* call: CLOCK.SlewTime */
  render: function () {
    var clock = this.clock.get("plugin");
    _.each([1, 2], function (n) { clock.GetAlarmSlot(n); });   /* call: CLOCK.GetAlarmSlot */
    this.model.trigger("ring", 2);
    return this;
  }
});
var device = new Device({}, { plugin: document.getElementById("power") });
var clockModel = new Clock();
clockModel.tick();
device.set("state", 2);
device.save();
new RoomView({ model: device, clock: clockModel }).render();
_.chain([device]).pluck("plugin").first().value().ReadAdc(3);   /* call: POWER.ReadAdc */
_.invoke([device.plugin], "TripBreaker");   /* call: POWER.TripBreaker */
var Bus = _.extend({}, Backbone.Events);
Bus.on("all", function (name, p) { p.SetCadence(name); });   /* call: CLOCK.SetCadence */
Bus.trigger("x", document.getElementById("clock"));
var Fake = Backbone.Model.extend({ plugin: { GateRail: function () { } } });
new Fake().plugin.GateRail();   /* decoy */
_.partial(function (p, n) { p.LatchTime(n); }, document.getElementById("clock"))(1);   /* call: CLOCK.LatchTime */
