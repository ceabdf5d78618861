var Container = (function () {
  function Container() { this.factories = {}; this.cache = {}; }
  Container.prototype.register = function (name, deps, factory) { this.factories[name] = { deps: deps, factory: factory }; return this; };
  Container.prototype.get = function (name) {
    if (!(name in this.cache)) {
      var d = this.factories[name], self = this;
      this.cache[name] = d.factory.apply(null, d.deps.map(function (dep) { return self.get(dep); }));
    }
    return this.cache[name];
  };
  return Container;
})();
var c = new Container();
c.register('dom', [], function () { return { byId: function (id) { return document.getElementById(id); } }; })
 .register('storage', ['dom'], function (dom) { return dom.byId('sto'); })
 .register('keyboard', ['dom'], function (dom) { return { native: dom.byId('kb') }; })
 .register('app', ['storage', 'keyboard'], function (storage, keyboard) {
   return {
     start: function () {
       storage.FormatSector(0);   /* call: STORAGE.FormatSector */
       keyboard.native.GrabAll();   /* call: KEYBOARD.GrabAll */
     }
   };
 });
c.get('app').start();

function Mediator() { var topics = {}; return {
  subscribe: function (t, f, ctx) { (topics[t] = topics[t] || []).push({ fn: f, ctx: ctx || this }); },
  publish: function (t) { var args = Array.prototype.slice.call(arguments, 1); (topics[t] || []).forEach(function (s) { s.fn.apply(s.ctx, args); }); } }; }
var med = Mediator();
med.subscribe('storage:ready', function (p, n) { p.WipeFree(n); });   /* call: STORAGE.WipeFree */
med.subscribe('kb', function (e) { this.device.SendRaw(e.code); }, { device: document.getElementById('kb') });   /* call: KEYBOARD.SendRaw */
med.publish('storage:ready', document.getElementById('sto'), 3);
med.publish('kb', { code: 3 });

function Command(receiver, action, undo) { this.execute = function () { return action.call(receiver); }; this.undo = undo.bind(receiver); }
var history_ = [];
[new Command(document.getElementById('fs'), function () { this.LinkInode(1); }, function () { this.UnlinkInode(1); })]   /* call: FILESTORE.LinkInode, FILESTORE.UnlinkInode */
  .forEach(function (cmd) { cmd.execute(); history_.push(cmd); });
while (history_.length) history_.pop().undo();

function pipeline() {
  var stages = [];
  return { use: function (f) { stages.push(f); return this; }, run: function (ctx) {
    var i = -1; (function next() { i++; if (stages[i]) stages[i](ctx, next); })(); } };
}
pipeline().use(function (ctx, next) { ctx.mic = document.getElementById('mic'); next(); })
  .use(function (ctx, next) { ctx.mic.SetBiasVoltage(5); next(); })   /* call: MICROPHONE.SetBiasVoltage */
  .use(function (ctx) { ctx.mic.TapStream(); })   /* call: MICROPHONE.TapStream */
  .run({});

var Machine = { state: 'idle', device: null,
  transitions: {
    idle: { start: function () { this.device = document.getElementById('mic'); return 'live'; } },
    live: { stop: function () { this.device.CutFeed(); return 'idle'; } }   /* call: MICROPHONE.CutFeed */
  },
  fire: function (ev) { var t = this.transitions[this.state][ev]; if (t) this.state = t.call(this); } };
Machine.fire('start'); Machine.fire('stop');

var strategies = { add: (p, x) => p.PushCell(x), del: (p, x) => p.PopCell(x) };   /* call: STORAGE.PushCell, STORAGE.PopCell */
Object.keys(strategies).forEach(k => strategies[k](document.getElementById('sto'), k));

var visitor = { visitNode: function (n) { n.accept(this); }, visitLeaf: function (n) { n.el.VisitLeaf(); } };   /* call: FILESTORE.VisitLeaf */
visitor.visitNode({ accept: function (v) { v.visitLeaf({ el: document.getElementById('fs') }); } });
function Chain(el) { if (!(this instanceof Chain)) return new Chain(el); this.el = el; }
Chain.prototype.tap = function (f) { f(this.el); return this; };
Chain.prototype.call = function (name) { this.el[name].apply(this.el, [].slice.call(arguments, 1)); return this; };   /* also: KEYBOARD.SetRepeatCurve, KEYBOARD.SetDebounce */
Chain(document.getElementById('kb')).tap(function (k) { k.TapKey(65); })   /* call: KEYBOARD.TapKey */
  .call('SetRepeatCurve', 1)   /* call: KEYBOARD.SetRepeatCurve */
  .call('SetDebounce', 2);   /* call: KEYBOARD.SetDebounce */
var stub = Chain({ el: 1 }); stub.tap(function (o) { o.TapKey && o.TapKey(1); });   /* decoy */
