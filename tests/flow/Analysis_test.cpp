// What flow analysis finds, tells, and leaves alone, in small applications.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "flow/Flow.h"

namespace {

flow::Database database() {
  flow::Database database;
  database.methods["MORVANE-NAVERTIX-AUDIO"] = {"GetVolume", "SetVolume"};
  database.methods["MORVANE-NAVERTIX-CAMERA"] = {"Capture"};
  database.methods["MORVANE-NAVERTIX-KOB"] = {"Execute", "Start"};
  database.identifiers = {"MORVANE-NAVERTIX-AUDIO", "MORVANE-NAVERTIX-CAMERA", "MORVANE-NAVERTIX-KOB"};
  return database;
}

constexpr const char* kElements =
    "<object id=\"au\" classid=\"clsid:MORVANE-NAVERTIX-AUDIO\"></object>"
    "<object id=\"cam\" classid=\"clsid:MORVANE-NAVERTIX-CAMERA\"></object>"
    "<object id=\"kob\" classid=\"clsid:MORVANE-NAVERTIX-KOB\"></object>";

flow::Result analyse(const std::string& script) {
  return flow::analyse({{"index.html", kElements + std::string("<script src=\"a.js\"></script>")}, {"a.js", script}},
                       database());
}

// "AUDIO.X CAMERA.Y", in the order of the places.
std::string found(const flow::Result& result) {
  std::string text;
  for (const flow::FoundCall& call : result.calls) {
    if (call.judgement != flow::Judgement::undocumented || call.confidence == flow::Confidence::possible) continue;
    text += (text.empty() ? "" : " ") + call.plugin.substr(std::string("MORVANE-NAVERTIX-").size()) + '.' + call.method;
  }
  return text;
}

struct Row {
  const char* script;
  const char* expected;
};

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
  };
  for (const Row& row : rows)
    EXPECT_EQ(found(analyse(row.script)), row.expected) << row.script;
}

TEST(FlowAnalysis, TellsNamesThatNobodyKnows) {
  const flow::Result result = analyse("function f(cmd) { au[cmd](); }\nkob.Execute(location.hash);");
  EXPECT_EQ(found(result), "");
  ASSERT_EQ(result.open.size(), 2U);
  EXPECT_EQ(result.open[0].place.line, 1);
  EXPECT_EQ(result.open[1].place.line, 2);
  EXPECT_TRUE(result.open[0].isOnPlugin);
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
  };
  for (const PageRow& row : rows) {
    const flow::Result result = flow::analyse({{"index.html", kElements + std::string(row.page)},
                                               {"m.js", "export const p = document.getElementById('au');"}},
                                              database());
    EXPECT_EQ(found(result), row.expected) << row.page;
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
  const std::vector<std::string> scripts = {
      repeat("(", 100'000) + repeat(")", 100'000),
      "a" + repeat(".b()", 50'000) + "; au.X();",
      "x = 1" + repeat(" + 'a'", 50'000) + ";",
      repeat("if (a) b(); else ", 20'000) + "c();",
      repeat("`${", 5'000) + "1" + repeat("}`", 5'000),
      repeat("function f() {", 5'000),
      std::string("au.X(); \xFF\xFE\xC0 \x00 au.Y();", 21),
      repeat("var a = {", 3'000),
  };
  for (const std::string& script : scripts) {
    const auto start = std::chrono::steady_clock::now();
    const flow::Result result = analyse(script);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60)) << script.substr(0, 20);
  }
  const flow::Result result = flow::analyse({{"index.html", kElements + repeat("<div>", 100'000)}}, database());
  ASSERT_EQ(result.notRead.size(), 1U);
  EXPECT_EQ(result.notRead[0].reason, "its elements are nested too deeply");
}

}  // namespace
