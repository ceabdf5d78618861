// The report of one application: which findings, where, and what of them the device gets.

#include "checker/run/Inspection.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "OwnDirectory.h"
#include "checker/formats/Wording.h"
#include "checker/report/ReportJson.h"
#include "checker/run/EngineRun.h"
#include "support/CraftedZip.h"
#include "swf-assembler/Assembler.h"

using Texts = std::vector<std::string>;

namespace {

class Inspection : public OwnDirectory {
 protected:
  Inspection() { write("index.html", page("tv", "TUNER")); }

  // Some folders down: the device's lines hide the first ones.
  static void write(const std::string& name, const std::string& bytes) {
    OwnDirectory::write("app/www/" + name, bytes);
  }

  static std::string page(const std::string& id, const std::string& plugin) {
    return "<object id='" + id + "' classid='MORVANE-NAVERTIX-" + plugin + "'></object>\n";
  }

  static ApplicationReport check(bool all, const std::set<std::string>& accepted = {}) {
    return inspect("app/www", {DATABASE, all, false, accepted});
  }
};

std::string textOf(const Call& call) {
  return call.path.substr(std::string("app/www/").size()) + ":" + std::to_string(call.place.line) + ":" +
         std::to_string(call.place.column) + " " + call.method;
}

Texts findingsOf(const ApplicationReport& report) {
  Texts texts;
  for (const Finding& finding : report.findings) {
    texts.push_back(textOf(finding.call) + " " + nameOf(finding.call.found) +
                    (finding.isOnDevice ? " " + finding.engineText : " -\n") + nameOf(finding.status));
  }
  return texts;
}

const std::string kScript =
    "/* one\n two */ function f() {\n"
    " var tv = document.getElementById('tv');\n"
    " tv.GetVersion(); tv.GetA(1); // tv.GetX()\n"
    " tv.GetA(2); /* x */ tv.GetB();\n"
    "}\n"
    "function g() { $('tv').GetC(1); $('tv').GetD(2); $('tv').GetC(3); }\n";

TEST_F(Inspection, AllCallsAreFoundWithTheirOwnPlaces) {
  write("a.js", kScript);
  const Texts onDevice = {"a.js:4:19 GetA variable ../a.js(3) : UndocumentedAPI 'GetA' used\nreported",
                          "a.js:7:17 GetC look-up ../a.js(2) : UndocumentedAPI 'GetC' used\nreported"};
  const ApplicationReport plain = check(false);
  EXPECT_EQ(findingsOf(plain), onDevice);
  EXPECT_EQ(plain.findings[0].call.code, "tv.GetA(1)");
  EXPECT_EQ(plain.findings[0].call.engineLine, 3);
  EXPECT_EQ(plain.verdict, Verdict::findings);

  const ApplicationReport all = check(true);
  Texts expected = onDevice;
  for (const char* behind : {"a.js:5:2 GetA variable -\nreported", "a.js:5:22 GetB variable -\nreported",
                             "a.js:7:34 GetD look-up -\nreported", "a.js:7:51 GetC look-up -\nreported"})
    expected.push_back(behind);
  std::sort(expected.begin(), expected.end());  // by place
  EXPECT_EQ(findingsOf(all), expected);
  EXPECT_EQ(countOf(all, Finding::Status::reported), 6U);
  EXPECT_TRUE(all.undetermined.empty());
}

TEST_F(Inspection, AFileThatChangesWhileItIsReadIsToldOf) {
  OwnDirectory::write("app.wgt", craftedZip({{"index.html", page("tv", "TUNER")}}));
  InspectionOptions options{DATABASE, false, false, {}};
  options.flow.isOn = true;  // so that there is a moment between rules
  options.flow.database = std::make_shared<const DatabaseListing>(listDatabase(DATABASE));
  EXPECT_EQ(inspect("app.wgt", options, [](const ApplicationReport&) {}).failure, "");
  const auto change = [](const ApplicationReport&) { OwnDirectory::write("app.wgt", "other"); };
  EXPECT_EQ(inspect("app.wgt", options, change).failure, "it changed while it was read");
}

TEST_F(Inspection, CallsThatTheRulesExemptAreListedApart) {
  write("index.html", page("tv", "TUNER") + page("kob", "KOB"));
  struct Row {
    std::string script, method, reason;
  } rows[] = {
      {"$('tv').toString()", "toString", "the name of a built-in function stands in it"},
      {"var tv = $('tv'); tv.OpenX(1);", "OpenX", "calls with '.Open' are not judged"},
      {"$('kob').GetSerial(1);", "GetSerial", "an extension call without the name of a method"},
      {"var tv = $('tv'); (tv.GetSerial()); tv = Common.API.Plugin;", "GetSerial",
       "the variable is taken for a helper object of the script library"},
  };
  for (const Row& row : rows) {
    write("a.js", "function f() { " + row.script + " }");
    const ApplicationReport report = check(false);
    EXPECT_EQ(report.verdict, Verdict::clean) << row.script;
    ASSERT_EQ(report.undetermined.size(), 1U) << row.script;
    EXPECT_EQ(report.undetermined[0].call.method, row.method) << row.script;
    EXPECT_EQ(report.undetermined[0].reason, row.reason) << row.script;
    EXPECT_EQ(report.undetermined[0].call.place.line, 1) << row.script;
  }
}

TEST_F(Inspection, AcceptedMethodsNeitherStopTheEngineNorCount) {
  write("a.js", kScript);
  const ApplicationReport some = check(false, {"GetA", "GetC", "getb"});
  EXPECT_EQ(findingsOf(some), (Texts{"a.js:4:19 GetA variable -\naccepted", "a.js:5:2 GetA variable -\naccepted",
                                     "a.js:5:22 GetB variable ../a.js(4) : UndocumentedAPI 'GetB' used\nreported",
                                     "a.js:7:17 GetC look-up -\naccepted",
                                     "a.js:7:34 GetD look-up ../a.js(2) : UndocumentedAPI 'GetD' used\nreported"}));
  EXPECT_EQ(check(false, {"GetA", "GetB", "GetC", "GetD"}).verdict, Verdict::clean);
  EXPECT_EQ(countOf(check(true, {"GetA"}), Finding::Status::accepted), 2U);
}

TEST_F(Inspection, CallsInFlashFilesAreCountedEachByItself) {
  std::string script;
  for (const char* method : {"GetSerial", "GetOther", "GetSerial"})
    script += std::string("Push 0 \"tv\"\nGetVariable\nPush \"") + method +
              "\"\nCallMethod\nPush 1 \"trace\"\nCallFunction\nPop\n";
  write("movie.swf", swf_assembler::assemble("doaction {\n" + script + "End\n}\nshowframe\nend\n"));
  write("a.js", "function f() { var tv = $('tv'); }");
  const Texts onDevice = {
      "movie.swf:0:0 GetSerial flash-variable ../movie.swf(-1) : UndocumentedAPI 'GetSerial' used\nreported"};
  const ApplicationReport plain = check(false);
  EXPECT_EQ(findingsOf(plain), onDevice);
  EXPECT_EQ(plain.findings[0].call.code, "tv.GetSerial())");
  const ApplicationReport all = check(true);
  EXPECT_EQ(findingsOf(all), (Texts{onDevice[0], "movie.swf:0:0 GetOther flash-variable -\nreported",
                                    "movie.swf:0:0 GetSerial flash-variable -\nreported"}));
  EXPECT_NE(all.findings[0].fingerprint, all.findings[2].fingerprint);
}

Texts fingerprintsOf(const ApplicationReport& report) {
  Texts texts;
  for (const Finding& finding : report.findings)
    texts.push_back(finding.call.method + " " + finding.fingerprint);
  return texts;
}

TEST_F(Inspection, FingerprintsStayWhenLinesMove) {
  const std::string twice = "function h() { var t = $('tv'); t.GetA(1); t.GetA(1); t.GetA( 1 ); }\n";
  write("a.js", kScript + twice);
  ApplicationReport first = check(true);
  Texts prints = fingerprintsOf(first);
  EXPECT_EQ(std::set<std::string>(prints.begin(), prints.end()).size(), 9U);
  ApplicationReport second = check(true);
  first.seconds = second.seconds = 0;
  EXPECT_EQ(toJson(first), toJson(second));
  EXPECT_EQ(fingerprintsOf(inspect("./app/www/", {DATABASE, true, false, {}})), prints);

  write("a.js", "var x;\n\n/* x\n*/" + kScript + "\n  // y\n\n" + twice);
  EXPECT_EQ(fingerprintsOf(check(true)), prints);
  write("b.js", kScript);  // the same calls in another file are others
  const Texts both = fingerprintsOf(check(true));
  EXPECT_EQ(std::set<std::string>(both.begin(), both.end()).size(), 15U);
}

TEST_F(Inspection, WhatCannotBeCheckedSaysWhy) {
  EXPECT_EQ(inspect("none.wgt", {DATABASE, true, false, {}}).failure, "no such file or directory");
  const ApplicationReport report = inspect("app/www", {"/no/database", true, false, {}});
  EXPECT_EQ(report.verdict, Verdict::notChecked);
  EXPECT_NE(report.failure.find("--database"), std::string::npos);
}

// Thousands of equal calls, of which the engine itself keeps the first ones only.
TEST_F(Inspection, EqualCallsAreAllFoundInTime) {
  std::string calls;
  for (int i = 0; i < 4000; ++i)
    calls += " tv.GetA();";
  for (int i = 0; i < 4000; ++i)
    calls += " $('tv').GetB();";
  write("a.js", "function f() { var tv = $('tv');" + calls + " }");
  const ApplicationReport report = check(true);
  EXPECT_EQ(report.findings.size(), 8'000U);
  EXPECT_EQ(report.findings.front().call.method + report.findings.back().call.method, "GetAGetB");
  EXPECT_TRUE(report.notChecked.empty());
  EXPECT_LT(report.seconds, 30);
  const ApplicationReport device = check(false);
  EXPECT_EQ(report.behindStops, 0U);
  EXPECT_EQ(device.findings.size() + device.behindStops, 8'000U);
  EXPECT_EQ(verdictOn(device), "2 uses of undocumented APIs; 7998 more where the device stops: --all lists them");
  EXPECT_EQ(reportFrom(toJson(device)).behindStops, device.behindStops);
}

TEST_F(Inspection, NoFindingHidesBehindManyOtherCalls) {
  std::string calls;
  for (int i = 0; i < 10'100; ++i)
    calls += " tv.GetA(" + std::to_string(i) + ");";
  write("a.js", "function f() { var tv = $('tv');" + calls + " tv.GetB(); }");
  for (const bool all : {false, true}) {
    const ApplicationReport report = check(all, {"GetA"});
    EXPECT_EQ(report.verdict, Verdict::findings);
    EXPECT_EQ(report.findings.back().call.method, "GetB");
    ASSERT_EQ(report.notChecked.size(), 1U);
    EXPECT_EQ(report.notChecked[0].reason, "only the first 10000 calls are listed");
  }
}

// On the device the extraction directory is one level less deep, so that more of a path is hidden.
TEST_F(Inspection, ALineThatTheHostGetsOnceIsGivenOnce) {
  const std::string script = "function f() { var tv = document.getElementById('tv'); tv.GetA(); }";
  OwnDirectory::write(
      "app.wgt", craftedZip({{"a/x/index.html", page("tv", "TUNER")}, {"a/x/m.js", script}, {"a/y/m.js", script}}));
  Texts lines;
  for (const Finding& finding : inspect("app.wgt", {DATABASE, false, false, {}}).findings)
    lines.push_back(finding.engineText);
  std::sort(lines.begin(), lines.end());
  const std::string line = "../m.js(1) : UndocumentedAPI 'GetA' used\n";
  EXPECT_EQ(lines, (Texts{"", line}));
  EXPECT_EQ(runEngine("app.wgt", EngineRunOptions{DATABASE}).findingLines, Texts{line});
}

TEST_F(Inspection, WhatAVerdictRestsOnIsCounted) {
  EXPECT_EQ(check(false).judgedCalls, 0U);
  write("second.html", page("au", "AUDIO"));
  write("a.js",
        "function f() { var tv = document.getElementById('tv'); tv.GetVersion(); tv.GetVersion(); tv.Open(); }\n"
        "function g() { $('au').GetVolume(1); }\n");
  const ApplicationReport report = check(false);
  EXPECT_EQ(report.verdict, Verdict::clean);
  EXPECT_EQ(report.judgedCalls, 3U);
  EXPECT_EQ(report.judgedPlugins, 2U);
  EXPECT_FALSE(report.hasCallsWithoutPlugin);
}

TEST_F(Inspection, CallsWithoutAnElementAreNoProof) {
  struct Row {
    const char* script;
    bool expected;
  };
  for (const Row& row :
       {Row{"tv . SetVolume ( 3 )", true},
        {"var tv = document.getElementById('tv');\n tv.GetSecret();", true},
        {"$('tv').GetSecret(1)", true},
        {"document.getElementById('tv').focus(); var d = document.getElementById('d'); d.blur();", false},
        {"$('tv').Value = 3; other.GetSecret(); x.SetVolume", false},
        {"// tv.SetVolume(1)", false}}) {
    OwnDirectory::write("page.js", row.script);
    EXPECT_EQ(inspect("page.js", {DATABASE, false, false, {}}).hasCallsWithoutPlugin, row.expected) << row.script;
  }
  write("a.js", "tv.SetVolume(1)");
  EXPECT_FALSE(check(false).hasCallsWithoutPlugin);
}

}  // namespace
