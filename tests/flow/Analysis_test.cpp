// What flow analysis finds, tells, and leaves alone, in small applications.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "flow/Flow.h"
#include "flow/ParseCache.h"
#include "tests/flow/SmallApplication.h"

namespace {

using flow_test::analyse;
using flow_test::database;
using flow_test::found;
using flow_test::kElements;
using flow_test::Row;

TEST(FlowAnalysis, FollowsObjectsToTheirCalls) {
  const std::vector<Row> rows = {
      {"var p = document.getElementById('au'); p.X();", "AUDIO.X"},
      {"au.X();", "AUDIO.X"},
      {"function get(id) { return document.getElementById(id); } get('au').X(); get('cam').Y();", "AUDIO.X CAMERA.Y"},
      {"f(); function f() { p.X(); } var p = document.getElementById('au');", "AUDIO.X"},
      {"var p = au; { let p = cam; p.X(); } p.Y();", "CAMERA.X AUDIO.Y"},
      {"try { throw au; } catch (p) { p.X(); }", "AUDIO.X"},
      {"var o = { get dev() { return au; } }; o.dev.X();", "AUDIO.X"},
      {"class B { #p = au; go() { this.#p.X(); } } class D extends B { run() { super.go(); } } new D().run();",
       "AUDIO.X"},
      {"function F(p) { this.p = p; } F.prototype.go = function () { this.p.X(); }; new F(au).go();", "AUDIO.X"},
      {"var {a: [, p]} = {a: [cam, au]}; p.X();", "AUDIO.X"},
      {"au.X.call(au); au['Y'].apply(au, []); au.Z.bind(au)(); Reflect.apply(au.W, au, []);",
       "AUDIO.X AUDIO.Y AUDIO.Z AUDIO.W"},
      {"function* g() { yield au; } for (const p of g()) p.X();", "AUDIO.X"},
      {"(async () => { const p = await Promise.resolve(au); p.X(); })();", "AUDIO.X"},
      {"new Map([['a', au]]).get('a').X();", "AUDIO.X"},
      {"var t = {up: 'X', down: 'Y'}; for (var k in t) au[t[k]]();", "AUDIO.X AUDIO.Y"},
      {"au['X' + String.fromCharCode(89)]();", "AUDIO.XY"},
      {"setTimeout('au.X()', 1); new Function('p', 'p.Y()')(cam);", "AUDIO.X CAMERA.Y"},
      {"document.body.innerHTML = '<object id=n classid=MORVANE-NAVERTIX-AUDIO>'; document.getElementById('n').X();",
       "AUDIO.X"},
      {"var o = document.createElement('object'); o.setAttribute('classid', 'clsid:MORVANE-NAVERTIX-CAMERA'); o.X();",
       "CAMERA.X"},
      {"kob.Execute('Start'); kob.Execute('Shell', 1);", "KOB.Shell"},
      {"function never() { au.X(); }", "AUDIO.X"},
      {"new Proxy({}, {get: function (t, k) { return au; }}).any.X();", "AUDIO.X"},
      {"document.embeds[1].X();", "CAMERA.X"},
      {"document.embeds.item(1).X();", "CAMERA.X"},
      {"var l = []; l.push(au); l[0].X();", "AUDIO.X"},
      {"(async () => { try { await Promise.reject({p: au}); } catch ({p}) { p.X(); } })();", "AUDIO.X"},
      {"function B() {} B.extend = function (m) { function C() { this.init(); } C.prototype = m; "
       "C.extend = arguments.callee; return C; };\n"
       "var W = B.extend({}).extend({ init: function () { au.X(); this.p = cam; } });\nnew W().p.Y();",
       "AUDIO.X CAMERA.Y"},
      {"function get() { return arguments.length > 0 ? cam : au; } get().X(); get(1).Y();", "AUDIO.X CAMERA.Y"},
      // A word that is taken apart and put together again stays the same word.
      {"function upper(w) { return w.charAt(0).toUpperCase() + w.slice(1); }\n"
       "var all = {flat: 1, rock: 2}, names = Object.keys(all), i = 0;\n"
       "function go(n) { au['Set' + upper(n)](); } go(names[i++ % 2]);",
       "AUDIO.SetFlat AUDIO.SetRock"},
      {"for (var i = 0; i < 2; i++) au['Band' + (i + 1)]();", "AUDIO.Band1 AUDIO.Band2"},
      {"var v = ['Get', 'Set'], n = ['X', 'Y'];\n"
       "for (var i = 0; i < 2; i++) for (var j = 0; j < n.length; j++) au[v[i] + n[j]]();",
       "AUDIO.GetX AUDIO.GetY AUDIO.SetX AUDIO.SetY"},
      {"function f(list) { for (var i = 1; i <= list.length; i++) cam['Take' + i](); } f(['a', 'b']);",
       "CAMERA.Take1 CAMERA.Take2"},
      {"document.body.innerHTML = '<b onclick=\"au.X(\\'' + escape('a b') + '\\')\">';", "AUDIO.X"},
      // What a plug-in is given to call is bound to what it belongs to.
      {"function on() { this.X(); } cam.Capture(on.bind(au));", "AUDIO.X"},
      // Classes that are made one of the other.
      {"class A { go() {} }\nconst m = (B) => class extends B { go() { super.go(); au.X(); } };\n"
       "const n = (B) => class extends B { go() { super.go(); cam.Y(); } };\n"
       "const C = [m, n].reduce((B, f) => f(B), A); new C().go();",
       "AUDIO.X CAMERA.Y"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(found(analyse(row.script)), row.expected) << row.script;
}

TEST(FlowAnalysis, FollowsNamesThatTextsAreTakenApartFor) {
  const std::vector<Row> rows = {
      {"var pascal = function (n) { return n.replace(/(^|-)(\\w)/g, function (all, dash, l) { return l.toUpperCase(); "
       "}); };\nau['Set' + pascal('black-level')](); cam['Set' + pascal('tint')]();",
       "AUDIO.SetBlackLevel CAMERA.SetTint"},
      {"au['Set' + 'edge'.replace(/^./, c => c.toUpperCase())]();", "AUDIO.SetEdge"},
      {"au['a-b'.split('-').map(function (w) { return w[0].toUpperCase() + w.substr(1); }).join('')]();", "AUDIO.AB"},
      {"au['x.SetOne'.replace(/^x\\./, '')](); au['Y-Get'.replace(/(\\w+)-(\\w+)/, '$2$1')]();",
       "AUDIO.SetOne AUDIO.GetY"},
      {"['au.A', 'cam.B'].forEach(function (l) { var dot = l.indexOf('.');\n"
       "document.getElementById(l.slice(0, dot))[l.slice(dot + 1)](); });",
       "AUDIO.A CAMERA.B"},
      {"var m = /^(\\w+)\\.(\\w+)$/.exec('cam.B'); document.getElementById(m[1])[m[2]]();", "CAMERA.B"},
      {"const {groups: {id, name}} = 'au#A'.match(/(?<id>\\w+)#(?<name>\\w+)/); document.getElementById(id)[name]();",
       "AUDIO.A"},
      {"'A,  B'.split(/,\\s*/).forEach(function (n) { au[n](); });", "AUDIO.A AUDIO.B"},
      {"for (const m of 'Aa Bb'.matchAll(/\\w+/g)) au[m[0]]();", "AUDIO.Aa AUDIO.Bb"},
      {"au[new RegExp('^x(.*)').exec('xA')[1]]();", "AUDIO.A"},
      {"const call = (texts, p) => p[texts[1].trim()](); call`do ${au} A`;", "AUDIO.A"},
      // A container that reads the names of parameters.
      {"var all = {}; function inject(f) { var list = /\\(([^)]*)\\)/.exec(String(f))[1];\n"
       "f.apply(null, list.split(',').map(function (s) { return all[s.trim()]; })); }\n"
       "all.audio = au; all.fake = { A: function () {} };\n"
       "inject(function (fake, audio) { audio.B(); fake.A(); });",
       "AUDIO.B"},
      {"var all = {p: cam}; function inject(f) { var names = f.toString().match(/^function\\s*\\(\\s*([^)]*)\\)/)[1];\n"
       "var args = []; names.split(',').forEach(function (n) { args.push(all[n]); }); f.apply(null, args); }\n"
       "inject(function (p) { p.A(); });",
       "CAMERA.A"},
      {"var all = {p: cam}; function inject(f) { var n = (f + '').split('(')[1].split(')')[0]; f(all[n]); }\n"
       "inject(function (p) { p.A(); });",
       "CAMERA.A"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(found(analyse(row.script)), row.expected) << row.script;
}

TEST(FlowAnalysis, FollowsListsThatAreUsedUp) {
  const std::vector<Row> rows = {
      {"function ns(path) { var parts = path.split('.'), at = window;\n"
       "while (parts.length) { var p = parts.shift(); at = at[p] = at[p] || {}; } return at; }\n"
       "ns('my.dev').audio = au; my.dev.audio.A();",
       "AUDIO.A"},
      {"function declare(name, made) { var parts = name.split('.'), at = window;\n"
       "while (parts.length > 1) at = at[parts[0]] = at[parts.shift()] || {}; at[parts[0]] = made; }\n"
       "declare('tv.Audio', function () { this.p = au; }); new tv.Audio().p.A();",
       "AUDIO.A"},
      {"function f() { var a = [].slice.call(arguments), n = a.shift(); cam[n].apply(cam, a); } f('A', 1);",
       "CAMERA.A"},
      {"var parts = 'a.b.A'.split('.'); au[parts.pop()]();", "AUDIO.A"},
      {"var list = [['au', 'A']], i = 0; function go(by) { i = (i + by) % list.length;\n"
       "document.getElementById(list[i][0])[list[i][1]](); } go(1);",
       "AUDIO.A"},
      {"var run = [(x, n) => n(document.getElementById(x)), (p) => p.B()].reduceRight((n, f) => x => f(x, n), null);\n"
       "run('cam');",
       "CAMERA.B"},
      {"class P { constructor(a) { this.a = a; } go() { this.a.A(); } }\n"
       "new (Function.prototype.bind.apply(P, [null].concat([cam])))().go();",
       "CAMERA.A"},
      {"const E = Symbol('e'), all = {}; all[E] = au; all[Symbol('other')] = cam; all[E].A();", "AUDIO.A"},
      {"function* inner() { const p = yield 1; p.A(); return cam; } function* outer() { (yield* inner()).B(); }\n"
       "const g = outer(); g.next(); g.next(au);",
       "AUDIO.A CAMERA.B"},
      {"function co(g) { const it = g(); (function step(v) { const r = it.next(v); "
       "Promise.resolve(r.value).then(step); })(); }\n"
       "co(function* () { const p = yield Promise.resolve(au); p.A(); const c = yield Promise.resolve(cam); c.B(); });",
       "AUDIO.A CAMERA.B"},
      {"(async () => { for await (const c of [Promise.resolve(cam)]) c.B(); })();", "CAMERA.B"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(found(analyse(row.script)), row.expected) << row.script;
}

TEST(FlowAnalysis, ReadsMarkupOfKnownAndUnknownParts) {
  const std::vector<Row> rows = {
      {"var html = ''; for (var i = 0; i < elsewhere.count(); i++)\n"
       "html += '<b onclick=\"au.X(' + i + ')\">' + elsewhere.name(i) + '</b>';\ndocument.body.innerHTML = html;",
       "AUDIO.X"},
      {"document.body.innerHTML = elsewhere.list.map(function (i) { return '<b onclick=\"cam.Y(\\'' + i.id + '\\')\">' "
       "+ "
       "i.name + '</b>'; }).join('');",
       "CAMERA.Y"},
      {"document.body.innerHTML = `<ul>${elsewhere.map(i => `<li "
       "onclick=\"cam.Y(${i.id})\">${i.name}</li>`).join('')}`;",
       "CAMERA.Y"},
      {"var parts = []; for (var i = 0; i < elsewhere.length; i++) parts.push('<b onclick=\"au.X(' + elsewhere[i].id + "
       "')\">', elsewhere[i].text, '</b>'); document.body.innerHTML = parts.join('');",
       "AUDIO.X"},
      {"function fill(text, data) { return text.replace(/\\{(\\w+)\\}/g, function (all, k) { return data[k]; }); }\n"
       "document.body.innerHTML = fill('<b onclick=\"{id}.{m}()\">', {id: 'au', m: 'X'});",
       "AUDIO.X"},
      {"function insert(to, kind) { var holder = document.createElement('div');\n"
       "holder.innerHTML = '<object classid=\"clsid:MORVANE-NAVERTIX-' + kind + '\"></object>';\n"
       "return to.appendChild(holder.firstChild); } insert(document.body, 'CAMERA').Y();",
       "CAMERA.Y"},
      // A name with a part that is not known is not known.
      {"document.body.innerHTML = '<b onclick=\"au.Set' + elsewhere.name + '()\">';", ""},
      {"document.title = '<b onclick=\"au.X(' + elsewhere.id + ')\">';", ""},
  };
  for (const Row& row : rows)
    EXPECT_EQ(found(analyse(row.script)), row.expected) << row.script;
  EXPECT_EQ(analyse(rows[6].script).open.size(), 1U);
}

TEST(FlowAnalysis, FollowsModulesEventsAndWordsThatAreCalledOn) {
  const std::vector<Row> rows = {
      // Each module of a bundle is read for itself, however deep it is asked for.
      {"(function (all, first) { var done = {}; function load(n) { if (!done[n]) { var m = done[n] = {exports: {}};\n"
       "all[n][0].call(m.exports, function (name) { return load(all[n][1][name]); }, m, m.exports); }\n"
       "return done[n].exports; } load(first); })({\n"
       "1: [function (require, module, exports) { require('b').go(); }, {b: 2}],\n"
       "2: [function (require, module, exports) { exports.go = require('c').go; }, {c: 3}],\n"
       "3: [function (require, module, exports) { exports.go = function () { require('d').p.X(); }; }, {d: 4}],\n"
       "4: [function (require, module, exports) { exports.p = au; exports.X = 1; }, {}]}, 1);",
       "AUDIO.X"},
      {"const bus = new EventTarget(); bus.addEventListener('b', e => e.detail.Y());\n"
       "bus.dispatchEvent(new CustomEvent('b', {detail: cam}));",
       "CAMERA.Y"},
      {"class Bus extends EventTarget { tell(p) { this.dispatchEvent(new CustomEvent('p', {detail: p})); } }\n"
       "const bus = new Bus(); bus.addEventListener('p', e => e.detail.X()); bus.tell(au);",
       "AUDIO.X"},
      {"function go() { au.X(); } go.call('text');", "AUDIO.X"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(found(analyse(row.script)), row.expected) << row.script;
}

TEST(FlowAnalysis, LeavesAloneWhatIsNoCallOfAPlugin) {
  const std::vector<Row> rows = {
      {"au.GetVolume(); cam.Capture();", ""},
      {"var p = au; p = { X: function () {} }; p.X();", ""},
      {"function f(au) { au.X(); } f({ X: function () {} });", ""},
      {"// au.X()\n/* au.X() */ var s = 'au.X()', r = /au.X()/;", ""},
      {"<!-- au.X()\n", ""},
      {"au.addEventListener('x', function () {}); au.focus(); au.toString(); au.setAttribute('a', 'b');", ""},
      {"au.X = function () {}; au.X();", ""},
      {"var list = [{ X: function () {} }, au]; list[0].X();", ""},
      // Each round of a loop has its own name, whoever declares the variable.
      {"function f(from, to) { var n; for (n in from) to[n] = from[n]; return to; }\n"
       "f({a: au, b: { X: function () {} }}, {}).b.X();",
       ""},
      {"var o = {a: 'GetVolume', b: 'X'}, m = {}; for (var n in o) (function (k) { m[k] = function () { return o[k]; "
       "}; "
       "})(n); au[m.a()]();",
       ""},
      // A list that holds both has lost which is where; what the method belongs to explains the call.
      {"var r = {}; function reg(n, o) { for (var i = 0; i < 2; i++) r[n + i] = o; } function use(n) { return r[n]; }\n"
       "reg('p', au); reg('s', { X: function () {} }); use('s' + Math.random()).X();",
       ""},
      {"function C(p) { if (!(this instanceof C)) return new C(p); this.p = p; }\n"
       "C.prototype.go = function (f) { f(this.p); }; C(au).go(function (p) {}); C({ X: 1 }).go(function (o) { o.X(); "
       "});",
       ""},
      // An object is never what && gives of its left side.
      {"var text = au && au.GetVolume(); text.split(',');", ""},
      // Documented for one of those that come.
      {"[au, cam].forEach(function (p) { p.GetVolume(); });", ""},
  };
  for (const Row& row : rows)
    EXPECT_EQ(found(analyse(row.script)), row.expected) << row.script;
}

TEST(FlowAnalysis, TellsWhatNobodyKnows) {
  struct OpenRow {
    const char* script;
    const char* reason;
    bool isOnPlugin;
  };
  const char* const kName = "the name of the method is not known";
  const std::vector<OpenRow> rows = {
      {"function f(cmd) { au[cmd](); }", kName, true},
      {"au[location.hash]();", kName, true},
      {"au[location.hash.slice(1)]();", kName, true},
      {"localStorage.getItem('n').split(',').forEach(function (n) { au[n](1); });", kName, true},
      {"kob.Execute(location.hash);", "the name that is passed to Execute is not known", true},
      // Which verb goes with which noun is not known.
      {"var v = ['Get', 'Set'], n = ['X', 'Y'], i = 0; au[v[i++ % 2] + n[i % 2]]();", kName, true},
      {"elsewhere.use(au);", "the plug-in is given to code that is not known", false},
      {"eval(location.hash);", "a text that is not constant is run as script", false},
      {"new Function('p', document.title)(au);", "a text that is not constant is run as script", false},
  };
  for (const OpenRow& row : rows) {
    const flow::Result result = analyse(row.script);
    EXPECT_EQ(found(result), "") << row.script;
    ASSERT_FALSE(result.open.empty()) << row.script;
    EXPECT_EQ(result.open[0].reason, row.reason) << row.script;
    EXPECT_EQ(result.open[0].isOnPlugin, row.isOnPlugin) << row.script;
  }
  for (const char* const known : {"use(au); function use(p) {}", "console.log(au); [].push(au);", "eval('1');"})
    EXPECT_TRUE(analyse(known).open.empty()) << known;
}

TEST(FlowAnalysis, FindsModulesByTheNamesThatLoadersGiveThem) {
  const std::vector<flow::File> files = {
      {"index.html", kElements + std::string("<script src=boot.js></script>")},
      {"boot.js",
       "require.config({baseUrl: 'app', paths: {hw: 'core/hardware', lib: '../lib'}, shim: {'lib/old': {exports: "
       "'Old'}}});\n"
       "require(['main'], function (main) { main.run().A(); });\n"
       "define('late', ['exports'], function (exports) { exports.p = au; });"},
      {"app/main.js",
       "define(['hw', './sub/list', 'lib/old', 'late', 'exports'], function (hw, list, old, late, exports) {\n"
       "  exports.run = function () { list(hw.p()); old.p.C(); late.p.D(); return cam; };\n});"},
      {"app/core/hardware.js", "define({p: function () { return au; }});"},
      {"app/sub/list.js",
       "define(function (require, exports, module) { var b = require('./base');\n"
       "module.exports = function (p) { b(p); }; });"},
      {"app/sub/base.js", "define([], () => function (p) { p.B(); });"},
      {"lib/old.js", "var Old = {p: cam};"},
  };
  EXPECT_EQ(found(flow::analyse(files, database())), "CAMERA.C AUDIO.D AUDIO.B CAMERA.A");
}

TEST(FlowAnalysis, ReadsExpressionsInTemplates) {
  struct TemplateRow {
    const char* library;
    const char* page;
    const char* script;
    const char* expected;
  };
  const std::vector<TemplateRow> rows = {
      {"angular", "<div ng-controller=\"C as c\"><b ng-click=\"c.p.X()\">{{ c.p.Y() | f }}</b></div>",
       "angular.module('m', []).controller('C', function () { this.p = au; });", "AUDIO.X AUDIO.Y"},
      {"angular", "<li ng-repeat=\"d in list track by $index\"><b ng-init=\"d.X()\"></b></li>",
       "angular.module('m', []).controller('C', function ($scope) { $scope.list = [cam]; });", "CAMERA.X"},
      {"angular", "<tv-plugin kind=\"audio\" name=\"p\"></tv-plugin>",
       "angular.module('m', []).factory('all', function () { var l = {}; return {add: function (n, e) { l[n] = e; }, "
       "get: function (n) { return l[n]; }}; })\n"
       ".directive('tvPlugin', ['all', function (all) { return {link: function (scope, element, attributes) {\n"
       "var e = document.createElement('object'); e.setAttribute('classid', 'MORVANE-NAVERTIX-' + attributes.kind);\n"
       "all.add(attributes.name, e); }}; }])\n"
       ".run(['all', function (all) { all.get('p').X(); }]);",
       "AUDIO.X"},
      {"vue", "<b @click=\"go(2)\" :title=\"dev().X()\"></b>",
       "new Vue({methods: {dev: function () { return au; }, go: function () { this.dev().Y(); }}});",
       "AUDIO.Y AUDIO.X"},
      {"knockout", "<b data-bind=\"text: p.X()\"></b><!-- ko foreach: list --><i data-bind=\"text: d.Y()\"></i>",
       "ko.applyBindings({p: au, list: ko.observableArray([{d: cam}])});", "AUDIO.X CAMERA.Y"},
      {"jquery", "<b ng-click=\"au.X()\" data-bind=\"text: au.X()\">{{ au.X() }}</b>", "", ""},
  };
  for (const TemplateRow& row : rows) {
    const std::string page = std::string("<script src=\"http://cdn.example/") + row.library + ".js\"></script>" +
                             kElements + row.page + "<script src=a.js></script>";
    EXPECT_EQ(found(flow::analyse({{"index.html", page}, {"a.js", row.script}}, database())), row.expected) << row.page;
  }
}

TEST(FlowAnalysis, KnowsWhatLibrariesDoWithFunctionsAndElements) {
  struct LibraryRow {
    const char* library;
    const char* script;
    const char* expected;
  };
  const std::vector<LibraryRow> rows = {
      {"react",
       "class V extends React.Component { constructor(p) { super(p); this.dev = React.createRef(); }\n"
       "componentDidMount() { this.dev.current.X(); this.props.p.Y(); }\n"
       "render() { return React.createElement('object', {ref: this.dev, classid: 'MORVANE-NAVERTIX-KOB'}); } }\n"
       "ReactDOM.render(React.createElement(V, {p: cam}), document.body);",
       "KOB.X CAMERA.Y"},
      {"preact",
       "class V extends preact.Component { render(props) { return preact.h('i', null, props.children(au)); } }\n"
       "preact.render(preact.h(V, null, function (p) { p.X(); }), document.body);",
       "AUDIO.X"},
      {"mithril",
       "m.mount(document.body, {view: function () { return m(Page, {p: au}); }});\n"
       "var Page = {oninit: function (v) { v.state.p = v.attrs.p; }, view: function (v) { v.state.p.X(); }};",
       "AUDIO.X"},
      {"rxjs",
       "var s = new rxjs.Subject(); s.pipe(rxjs.map(function (p) { return {p: p}; })).subscribe(function (o) { "
       "o.p.X(); "
       "});\ns.next(cam);",
       "CAMERA.X"},
      {"underscore",
       "document.body.innerHTML = _.template('<% _.each(list, function (p) { p.X(); }); %><b onclick=\"cam.Y(<%= n "
       "%>)\">')"
       "({list: [au], n: 1});",
       "AUDIO.X CAMERA.Y"},
      {"mustache",
       "document.body.innerHTML = Mustache.render('{{#list}}<b onclick=\"au.X({{n}})\">{{.}}</b>{{/list}}', {n: 1});",
       "AUDIO.X"},
      {"vue",
       "new Vue({mounted() { const {s} = this.$refs; s.X(); },\n"
       "template: '<div><object ref=\"s\" classid=\"MORVANE-NAVERTIX-AUDIO\"></object></div>'});",
       "AUDIO.X"},
      {"jquery", "$.each(['X'], function (i, name) { au[name](i); });", "AUDIO.X"},
      {"jquery", "$.getJSON('commands.json', function (c) { au[c.first](); });", "AUDIO.FromFile"},
  };
  for (const LibraryRow& row : rows) {
    const std::string page = std::string("<script src=\"http://cdn.example/") + row.library + ".js\"></script>" +
                             kElements + "<script src=a.js></script>";
    const flow::Result result = flow::analyse(
        {{"index.html", page}, {"a.js", row.script}, {"commands.json", "{\"first\": \"FromFile\"}"}}, database());
    EXPECT_EQ(found(result), row.expected) << row.script;
  }
}

TEST(FlowAnalysis, KnowsLibrariesThatWereJoinedBehindOthers) {
  const std::string first = "!function(){" + std::string(1500, 'a') + "}();\n";
  const flow::Result result = flow::analyse(
      {{"index.html", kElements + std::string("<script src=\"v.js\"></script><script src=\"a.js\"></script>")},
       {"v.js", first + "/*! jQuery v3.7.1 | (c) OpenJS Foundation */\n!function(){fn.init}();"},
       {"a.js", "$(function () { $('#au').get(0).X(); });"}},
      database());
  EXPECT_EQ(found(result), "AUDIO.X");
  ASSERT_EQ(result.libraries.size(), 1U);
  EXPECT_EQ(result.libraries[0].name, "jQuery");
}

TEST(FlowAnalysis, KnowsTheValuesThatFilesAndElementsHold) {
  const std::vector<Row> rows = {
      {"fetch('d/commands.json?v=1').then(function (r) { return r.json(); }).then(function (c) { au[c.list[0]](); });",
       "AUDIO.FromFile"},
      {"var x = new XMLHttpRequest(); x.open('GET', 'd/commands.json');\n"
       "x.onload = function () { au[JSON.parse(x.responseText).list[0]](); }; x.send();",
       "AUDIO.FromFile"},
      {"import('./d/commands.json').then(function (m) { au[m.default.list[0]](); });", "AUDIO.FromFile"},
      {"document.body.onclick = function (e) { au[e.target.getAttribute('data-do')](); };", "AUDIO.FromElement"},
      {"document.addEventListener('click', function (e) { au[e.target.dataset.do](); });", "AUDIO.FromElement"},
      {"var o = {}; o.__defineGetter__('p', function () { return au; }); o.p.X();", "AUDIO.X"},
      {"function go(name) { kob.Execute.apply(kob, [name].concat([].slice.call(arguments, 1))); } go('Shell', 'tv');",
       "KOB.Shell"},
  };
  for (const Row& row : rows) {
    const std::string page = kElements + std::string("<p data-do=\"FromElement\">x</p><script src=a.js></script>");
    const flow::Result result = flow::analyse(
        {{"index.html", page}, {"a.js", row.script}, {"d/commands.json", "{\"list\": [\"FromFile\"]}"}}, database());
    EXPECT_EQ(found(result), row.expected) << row.script;
  }
}

TEST(FlowAnalysis, SaysWhereAndHow) {
  const flow::Result result = analyse("\nfunction on(p) {\n  p.GetVolme();\n}\non(document.getElementById('au'));");
  ASSERT_EQ(result.calls.size(), 1U);
  const flow::FoundCall& call = result.calls[0];
  EXPECT_EQ(call.place.path, "a.js");
  EXPECT_EQ(call.place.line, 3);
  EXPECT_EQ(call.place.column, 3);
  EXPECT_EQ(call.code, "p.GetVolme()");
  EXPECT_EQ(call.advice, "did you mean 'GetVolume'?");
  ASSERT_GE(call.trace.size(), 4U);
  EXPECT_EQ(call.trace.front().what, "element");
  EXPECT_EQ(call.trace.front().place.path, "index.html");
  EXPECT_EQ(call.trace[1].what, "look-up 'au'");
}

TEST(FlowAnalysis, ReadsWhatABrowserWouldRun) {
  struct PageRow {
    const char* page;
    const char* expected;
  };
  const std::vector<PageRow> rows = {
      {"<body onload=\"au.X()\">", "AUDIO.X"},
      {"<a href=\"javascript:au.X()\">a</a>", "AUDIO.X"},
      {"<script src=\"data:text/javascript,au.X()\"></script>", "AUDIO.X"},
      {"<script type=module>import {p} from './m.js'; p.X();</script>", "AUDIO.X"},
      {"<script type=\"text/template\">au.X()</script>", ""},
      {"<noscript><a onclick=\"au.X()\">a</a></noscript>", ""},
  };
  for (const PageRow& row : rows) {
    const flow::Result result = flow::analyse({{"index.html", kElements + std::string(row.page)},
                                               {"m.js", "export const p = document.getElementById('au');"}},
                                              database());
    EXPECT_EQ(found(result), row.expected) << row.page;
  }
}

// Large scripts that have no word of plug-ins, as libraries do: what they would say of a page without plug-ins is not
// worth the time that they take.
TEST(FlowAnalysis, ReadsLargeScriptsWherePluginsMayComeToThem) {
  const std::string kit =
      "function Kit(p) { p.X(); eval(location.hash); }\n"
      "function Make(kind) { var e = document.createElement('object'); e.setAttribute('classid', kind); Kit(e); }\n"
      "/*" +
      std::string(70'000, ' ') + "*/";
  struct KitRow {
    const char* start;  // in the page with the plug-ins
    const char* page;   // in the one with the large script
    const char* script;
    const char* expected;
  };
  const std::vector<KitRow> rows = {
      {"", "", "Kit({}); Make('AUDIO');", ""},
      {"", "<object id=here classid=\"clsid:MORVANE-NAVERTIX-AUDIO\"></object>", "Kit(here);", "AUDIO.X"},
      {"", "",
       "var e = document.createElement('object'); e.setAttribute('classid', 'MORVANE-' + name); Kit(e);\n"
       "var name = 'NAVERTIX-AUDIO';",
       "AUDIO.X"},
      {"", "", "fetch('kinds.json').then(r => r.json()).then(c => Make(c.kind));", "AUDIO.X"},
      {"", "", "Kit(document.getElementById('a' + 'u'));", "AUDIO.X"},
      {"<script>var chosen = au;</script><iframe src=kit.html></iframe>", "", "Kit(parent.chosen);", "AUDIO.X"},
  };
  for (const KitRow& row : rows) {
    const flow::Result result =
        flow::analyse({{"index.html", kElements + std::string(row.start)},
                       {"kit.html", row.page + std::string("<script src=kit.js></script><script src=a.js></script>")},
                       {"kit.js", kit},
                       {"a.js", row.script},
                       {"kinds.json", "{\"kind\": \"MORVANE-NAVERTIX-AUDIO\"}"}},
                      database());
    EXPECT_EQ(found(result), row.expected) << row.script;
    EXPECT_EQ(result.open.empty(), *row.expected == '\0') << "the text that it runs is told where it is read";
  }
}

TEST(FlowAnalysis, DoesNotDependOnTheOrderOfFiles) {
  const std::vector<flow::File> files = {
      {"index.html", kElements + std::string("<script src=b.js></script><script src=a.js></script>")},
      {"a.js", "use(function (p) { p.X(); });"},
      {"b.js", "function use(f) { f(document.getElementById('cam')); }"}};
  const std::vector<flow::File> reversed(files.rbegin(), files.rend());
  EXPECT_EQ(found(flow::analyse(files, database())), "CAMERA.X");
  EXPECT_EQ(found(flow::analyse(reversed, database())), "CAMERA.X");
}

TEST(FlowAnalysis, AnswersHostileTexts) {
  const auto repeat = [](const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i)
      all += text;
    return all;
  };
  // What stands before and behind it is found all the same; what is not read is told.
  struct HostileRow {
    std::string middle;
    const char* expected;
    bool isWhole;
  };
  const char* const both = "AUDIO.X CAMERA.Y";
  const std::vector<HostileRow> rows = {
      {repeat("(", 100'000) + '1' + repeat(")", 100'000), both, false},
      {"var a = " + repeat("[", 100'000) + repeat("]", 100'000), both, false},
      {repeat("{", 100'000) + repeat("}", 100'000), both, false},
      {repeat("function f() {", 100'000) + repeat("}", 100'000), both, false},
      {"a" + repeat(".b()", 50'000), both, true},
      {"x = 1" + repeat(" + 'a'", 50'000), both, true},
      {repeat("if (a) b(); else ", 20'000) + "c()", both, false},
      {repeat("`${", 5'000) + "1" + repeat("}`", 5'000), both, false},
      {repeat("!", 100'000) + "1", both, false},
      {repeat("a = b = ", 50'000) + "1", both, true},
      {"a = " + repeat("x.a === 'b' && ", 30'000) + "1", both, true},
      {"switch (x.k) {" + repeat("case 'a': case 'b': y(z);", 20'000) + "}", both, true},
      {"(function (o) {" + repeat("if (o.k === 'a') return;", 20'000) + "})({k: 'b'})", both, true},
      {"var d = [" + repeat("17,", 100'000) + "1]", both, true},
      // What follows is no script any more.
      {repeat("(", 100'000), "AUDIO.X", false},
      {repeat("function f() {", 5'000), both, true},
      {repeat("var a = {", 3'000), "AUDIO.X", true},
      {std::string("var \xFF\xFE\xC0 \x00", 9), both, true},
  };
  for (const HostileRow& row : rows) {
    const auto start = std::chrono::steady_clock::now();
    const flow::Result result =
        analyse("document.getElementById('au').X();\n" + row.middle + ";\ndocument.getElementById('cam').Y();");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60)) << row.middle.substr(0, 20);
    EXPECT_EQ(found(result), row.expected) << row.middle.substr(0, 20);
    EXPECT_EQ(result.notRead.empty(), row.isWhole) << row.middle.substr(0, 20);
  }
  const flow::Result result = flow::analyse({{"index.html", kElements + repeat("<div>", 100'000)}}, database());
  ASSERT_EQ(result.notRead.size(), 1U);
  EXPECT_EQ(result.notRead[0].reason, "its elements are nested too deeply");
}

TEST(FlowAnalysis, IsTheSameWithACache) {
  flow::ParseCache cache;
  const flow::Extras extras{true, &cache};
  std::string script = "var p = document.getElementById('au'); p.X(); p.GetVolume();";
  for (const char* added : {"", "p.Y();", "", "f(); function f() { p.Z(); }"}) {
    const std::vector<flow::File> files = {{"index.html", kElements + std::string("<script src=\"a.js\"></script>")},
                                           {"a.js", script + added}};
    const flow::Result cached = flow::analyse(files, database(), {}, extras);
    EXPECT_EQ(found(cached), found(flow::analyse(files, database())));
    for (const flow::FoundCall& call : cached.calls)
      EXPECT_EQ(call.trace.empty() ? "" : call.trace.front().what, "element") << call.method;
  }
}

}  // namespace
