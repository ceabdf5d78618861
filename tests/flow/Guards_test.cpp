// What flow analysis leaves out behind a condition, and what it must not leave out.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/flow/SmallApplication.h"

namespace {

using flow_test::found;
using flow_test::Row;

void expectFound(const std::vector<Row>& rows) {
  for (const Row& row : rows)
    EXPECT_EQ(row.expected, found(flow_test::analyse(row.script))) << row.script;
}

TEST(Guards, TellObjectsApartByWhatIsAskedOfThem) {
  const std::string list = "var own = {W: function () {}}; var l = [{kind: 'real', at: au}, {kind: 'own', at: own}]; ";
  const std::vector<std::string> bodies = {
      "l.forEach(function (s) { if (s.kind === 'real') s.at.X(); else s.at.W(); });",
      "l.forEach(({kind, at}) => { if (kind !== 'own') { at.X(); return; } at.W(); });",
      "l.forEach(function (s) { switch (s.kind) { case 'own': s.at.W(); break; default: s.at.X(); } });",
      "for (const s of l) { if (s.kind == 'own') { s.at.W(); continue; } s.at.X(); }",
      "l.forEach(s => s.kind === 'real' ? s.at.X() : s.at.W());",
      "l.forEach(s => { s.kind === 'real' && s.at.X(); s.kind === 'real' || s.at.W(); });",
      "l.filter(s => s.kind === 'own').forEach(s => s.at.W()); l.find(s => s.kind === 'real').at.X();",
      "var m = []; l.forEach(s => m.push(s)); m.forEach(s => { if (s.kind == 'real') s.at.X(); else s.at.W(); });",
  };
  for (const std::string& body : bodies)
    EXPECT_EQ("AUDIO.X", found(flow_test::analyse(list + body))) << body;
  expectFound({
      {"function Own() {} Own.prototype.W = function () {};"
       "[new Own(), au].forEach(function (p) { if (p instanceof Own) p.W(); else p.X(); });",
       "AUDIO.X"},
      {"[{is: true, at: au}, {is: false, at: {}}].forEach(({is, at}) => { if (is) at.X(); else at.W(); });", "AUDIO.X"},
      {"document.querySelectorAll('object').forEach(p => { if (p.id === 'cam') p.X(); });", "CAMERA.X"},
      {"function ask(name) { if (['X', 'Y'].indexOf(name) < 0) return; au[name](); } ask('X'); ask('W');", "AUDIO.X"},
      {"function ask(name) { if (['X'].includes(name)) au[name](); } ask('X'); ask('W');", "AUDIO.X"},
      {"var o = {W: 1}; function ask(name) { if (!(name in o)) au[name](); } ask('X'); ask('W');", "AUDIO.X"},
      {"var short = {x: 'X'}; function ask(n) { au[short[n] || n](); } ask('x'); ask('Y');", "AUDIO.X AUDIO.Y"},
      {"function ask(n) { return function () { au[short[n] || n](); }; } var short = {x: 'X'}; ask('x')();", "AUDIO.X"},
      {"[['Y', 'X'], 'W'].forEach(function (e) { if (typeof e === 'string') return; au[e[1]](); });", "AUDIO.X"},
      {"var all = {}; function on(c, f, own) { (all[c] = all[c] || []).push({f: f, own: own}); }"
       "on('a', function () { this.W(); }, {W: function () {}}); on('a', function () { this.X(); }, au);"
       "all[location.hash].forEach(function (s) { s.f.call(s.own); });",
       "AUDIO.X"},
  });
}

TEST(Guards, LoseNothingThatMayRun) {
  expectFound({
      // What nobody knows, and what is not there.
      {"function f(e) { if (e.keyCode === 13) au.X(); else if (e.mode == 'a') au.Y(); else au.Z(); }"
       "document.onkeydown = f;",
       "AUDIO.X AUDIO.Y AUDIO.Z"},
      {"[{kind: 'a'}, {at: au}].forEach(s => { if (s.kind === 'a') return; s.at.X(); });", "AUDIO.X"},
      {"function f(o) { if (o.silent === true) return; o.p.X(); } f({silent: true, p: cam}); f({p: au});", "AUDIO.X"},
      {"function f(o, p) { if (o.silent === true) return; p.X(); } var o = {silent: true}; f(o, au); o = {}; f(o, "
       "cam);",
       "CAMERA.X"},
      {"var mode = 'a'; setTimeout(function () { mode = 'b'; }, 1);"
       "document.onclick = function () { if (mode === 'b') au.X(); };",
       "AUDIO.X"},
      {"var mode = localStorage.getItem('mode') || 'a'; if (mode === 'b') au.X();", "AUDIO.X"},
      {"var s = {on: false}; s.on = document.hidden; if (s.on) au.X(); var n = 0; n++; if (n === 1) au.Y();",
       "AUDIO.X AUDIO.Y"},
      {"var s = {on: false}; s.on = [1].some(Boolean); if (s.on) au.X();", "AUDIO.X"},
      {"var names = ['X']; names.push(location.hash); function f(n) { if (names.includes(n)) au[n](); } f('X'); "
       "f('Y');",
       "AUDIO.X AUDIO.Y"},
      {"[au].filter(p => p.Ready()).forEach(p => p.X());", "AUDIO.Ready AUDIO.X"},
      {"switch (location.hash) { case 'a': au.X(); case 'b': au.Y(); break; default: au.Z(); }",
       "AUDIO.X AUDIO.Y AUDIO.Z"},
      // What is done once.
      {"var o = {}; function f() { if (o.done) return; o.done = true; au.X(); } f();", "AUDIO.X"},
      {"function S() {} S.prototype.go = function (p) { if (this.state === 'on') return; this.state = 'on'; p.X(); };"
       "new S().go(au);",
       "AUDIO.X"},
      {"var made = {}; function get(id) { if (made[id]) return made[id]; return made[id] = document.getElementById(id);"
       "} get('au').X(); get('au').Y();",
       "AUDIO.X AUDIO.Y"},
      {"var seen = []; function once(n) { if (seen.indexOf(n) >= 0) return; seen.push(n); au[n](); } once('X');",
       "AUDIO.X"},
      // Each condition opens only once the one around it has.
      {"var o = {}; if (o.a == 1) { if (o.b == 2) { if (o.c == 3) { if (o.d == 4) au.X(); } } }", "AUDIO.X"},
  });
}

TEST(Guards, WhatWasJustWrittenIsWhatIsThere) {
  expectFound({
      {"var o; function f() { o = au; o.X(); o = {W: function () {}}; o.W(); o = cam; o.Y(); } f();",
       "AUDIO.X CAMERA.Y"},
      {"function f() { o = {W: 1}; o.W(); } function g() { o = au; o.X(); } f(); g();", "AUDIO.X"},
      // Until other code may have written it.
      {"var o; function real() { o = au; } function f() { o = {}; real(); o.X(); } f();", "AUDIO.X"},
      {"var o; function f() { o = {}; new R(); o.X(); } function R() { o = au; } f();", "AUDIO.X"},
      {"var o; async function f() { o = {}; await 1; o.X(); } f(); o = au;", "AUDIO.X"},
      {"var o, n = 2; function f() { o = {}; while (n--) { o.X(); swap(); } } function swap() { o = au; } f();",
       "AUDIO.X"},
  });
}

}  // namespace
