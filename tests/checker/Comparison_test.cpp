// What is new, gone and moved between two versions, and that pages and texts of it are harmless.

#include "checker/report/Comparison.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "checker/formats/ComparisonFormats.h"

using Status = Finding::Status;

namespace {

Finding finding(const std::string& path, int line, const std::string& method, const std::string& fingerprint,
                Status status = Status::reported) {
  Finding made;
  made.call.path = path;
  made.call.place = {line, 3};
  made.call.plugin = "TUNER";
  made.call.method = method;
  made.call.code = "tv." + method + "( )";
  made.fingerprint = fingerprint;
  made.status = status;
  return made;
}

ApplicationReport report(const std::string& application, const std::vector<Finding>& findings = {},
                         const std::vector<NotChecked>& notChecked = {}) {
  ApplicationReport made;
  made.application = application;
  made.findings = findings;
  made.notChecked = notChecked;
  made.files = {application + "!/index.html"};
  conclude(made);
  return made;
}

std::string lines(const Comparison& comparison, ComparisonFormat format = ComparisonFormat::text) {
  std::ostringstream out;
  write(comparison, format, false, out);
  return out.str();
}

// "new Get 7, moved Put 9 from a!/x.js:8:3; 1 same"
std::string changesOf(const ApplicationReport& older, const ApplicationReport& newer) {
  const Comparison comparison = compare({{}, {older}}, {{}, {newer}});
  EXPECT_EQ(comparison.applications.size(), 1U);
  std::string text;
  for (const FindingChange& change : comparison.applications[0].findings) {
    text += std::string(nameOf(change.what)) + " " + change.finding.call.method + " " +
            std::to_string(change.finding.call.place.line);
    if (change.isInBoth) text += " was " + change.olderPath + ":" + std::to_string(change.olderPlace.line);
    text += ", ";
  }
  return text + std::to_string(comparison.applications[0].same) + " same";
}

TEST(Comparison, TellsNewGoneAndMovedApart) {
  struct Row {
    const char* what;
    std::vector<Finding> older;
    std::vector<Finding> newer;
    const char* changes;
  };
  for (const Row& row : std::vector<Row>{
           {"equal", {finding("a!/x.js", 7, "Get", "1")}, {finding("b!/x.js", 7, "Get", "1")}, "1 same"},
           {"other lines",
            {finding("a!/x.js", 7, "Get", "1")},
            {finding("b!/x.js", 9, "Get", "1")},
            "moved Get 9 was a!/x.js:7, 0 same"},
           {"another file",
            {finding("a!/x.js", 7, "Get", "1")},
            {finding("b!/y.js", 7, "Get", "2")},
            "moved Get 7 was a!/x.js:7, 0 same"},
           {"another method",
            {finding("a!/x.js", 7, "Get", "1")},
            {finding("b!/x.js", 7, "Put", "2")},
            "new Put 7, gone Get 7, 0 same"},
           {"one more of a kind",
            {finding("a!/x.js", 7, "Get", "1")},
            {finding("b!/x.js", 7, "Get", "1"), finding("b!/x.js", 8, "Get", "2")},
            "new Get 8, 1 same"},
           {"the fingerprint goes before the call",
            {finding("a!/x.js", 7, "Get", "1"), finding("a!/y.js", 7, "Get", "2")},
            {finding("b!/y.js", 7, "Get", "2")},
            "gone Get 7, 1 same"},
           {"excused before",
            {finding("a!/x.js", 7, "Get", "1", Status::accepted)},
            {finding("b!/x.js", 7, "Get", "1")},
            "new Get 7 was a!/x.js:7, 0 same"},
           {"excused now",
            {finding("a!/x.js", 7, "Get", "1")},
            {finding("b!/x.js", 7, "Get", "1", Status::noted)},
            "gone Get 7 was a!/x.js:7, 0 same"},
           {"known in a baseline is no news",
            {finding("a!/x.js", 7, "Get", "1")},
            {finding("b!/x.js", 7, "Get", "1", Status::known)},
            "1 same"},
           {"the same fingerprint by chance",
            {finding("a!/x.js", 7, "Get", "1")},
            {finding("b!/x.js", 7, "Put", "1")},
            "new Put 7, gone Get 7, 0 same"},
       })
    EXPECT_EQ(changesOf(report("a", row.older), report("b", row.newer)), row.changes) << row.what;
}

TEST(Comparison, FindsApplicationsAgain) {
  struct Row {
    std::vector<std::string> older;
    std::vector<std::string> newer;
    std::string titles;
  };
  for (const Row& row : std::vector<Row>{
           {{"v1.wgt"}, {"v2.wgt"}, "v1.wgt, now v2.wgt; "},
           {{"a.wgt", "b.wgt"}, {"b.wgt", "c.wgt"}, "b.wgt; c.wgt, which is new; a.wgt, which is gone; "},
           {{"old/x/a.wgt", "old/y/a.wgt"},
            {"new/dist/y/a.wgt", "new/dist/x/a.wgt"},
            "old/y/a.wgt, now new/dist/y/a.wgt; old/x/a.wgt, now new/dist/x/a.wgt; "},
           {{"old/a.wgt", "old/b.wgt"},
            {"new/x/b.wgt", "new/a.wgt"},
            "old/b.wgt, now new/x/b.wgt; old/a.wgt, now new/a.wgt; "},
           {{"p/a.wgt", "q/a.wgt"},
            {"a.wgt", "z"},
            "a.wgt, which is new; z, which is new; p/a.wgt, which is gone; q/a.wgt, which is gone; "},
           {{}, {"a"}, "a, which is new; "},
           {{"www/"}, {"www"}, "www/, now www; "},
           {{""}, {"/"}, "/, which is new; "},
       }) {
    const auto version = [](const std::vector<std::string>& names) {
      Version made;
      for (const std::string& name : names)
        made.applications.push_back(report(name));
      return made;
    };
    std::string titles;
    for (const ApplicationComparison& application : compare(version(row.older), version(row.newer)).applications)
      titles += titleOf(application) + "; ";
    EXPECT_EQ(titles, row.titles);
  }
}

TEST(Comparison, CountsCallsPluginsAndFiles) {
  ApplicationReport older = report("a", {finding("a!/x.js", 7, "Get", "1")}, {{"a!/a.swf", "cut"}});
  older.documentedUses = {
      {"TUNER", "Set", "a!/x.js", 2}, {"TUNER", "Set", "a!/y.js", 1}, {"AUDIO", "Mute", "a!/x.js", 1}};
  older.files = {"a!/index.html", "a!/x.js"};
  ApplicationReport newer =
      report("b", {finding("b!/x.js", 7, "Get", "1")}, {{"b!/a.swf", "cut"}, {"b!/b.swf", "cut"}});
  newer.documentedUses = {{"TUNER", "Set", "b!/x.js", 2}};
  newer.elements = {{"PLAYER", "p", "b!/index.html"}};
  newer.files = {"b!/x.js", "b!/y\xE9.js"};
  newer.rules = {"engine", "flow"};
  older.rules = {"engine"};
  EXPECT_EQ(lines(compare({{}, {older}}, {{}, {newer}})),
            "not checked: b!/b.swf: cut\n"
            "calls: AUDIO.Mute: 0 calls, before 1\n"
            "calls: TUNER.Set: 2 calls, before 3\n"
            "plug-in came: PLAYER\n"
            "plug-in went: AUDIO\n"
            "file came: y\xEF\xBF\xBD.js\n"
            "file went: index.html\n"
            "a, now b: note: other rules ran: engine; now engine, flow\n"
            "a, now b: 0 new, 0 gone, 0 moved, 1 the same; 1 more part not checked\n");
}

TEST(Comparison, SaysWhatItCannotCompare) {
  ApplicationReport brief = report("a", {finding("a!/x.js", 7, "Get", "1")});
  brief.files.clear();
  brief.behindStops = 2;
  ApplicationReport failed = report("a");
  failed.failure = "it is cut";
  conclude(failed);
  const ApplicationReport whole = report("a", {finding("a!/x.js", 7, "Get", "1")});
  RunFacts facts;
  facts.databaseSha256 = "1";
  facts.tool = "1.0";
  RunFacts others = facts;
  others.databaseSha256 = others.tool = "2";
  EXPECT_EQ(lines(compare({facts, {brief}}, {others, {whole}})),
            "note: the database is another one: was , is \n"
            "note: the checker is of another version: was 1.0, is 2\n"
            "a: note: calls and files are not compared: the report of the older version has no list of files, as --all "
            "makes one\n"
            "a: note: the older version has 2 more uses of undocumented APIs, which its check did not list\n"
            "a: 0 new, 0 gone, 0 moved, 1 the same\n");
  // What could not be checked is not gone.
  EXPECT_EQ(lines(compare({facts, {whole}}, {facts, {failed}})),
            "a: note: the newer version could not be checked: it is cut\na: 0 new, 0 gone, 0 moved, 0 the same\n");
  EXPECT_EQ(lines(compare({facts, {failed}}, {facts, {whole}})),
            "a!/x.js:7:3: new: undocumented API 'Get' on TUNER (variable)\n"
            "a: note: the older version could not be checked: it is cut\na: 1 new, 0 gone, 0 moved, 0 the same\n");
}

TEST(Comparison, IsHarmlessInEveryFormat) {
  const std::string hostile = "</code><script>alert(1)</script>\"'&\x1B[2K\n\xE2\x80\xAE\xFF";
  ApplicationReport older = report("a" + hostile, {finding("a" + hostile + "!/x", 1, "Get" + hostile, "1")});
  ApplicationReport newer =
      report("b" + hostile, {finding("b" + hostile + "!/x", 2, "Put" + hostile, "2")}, {{"b" + hostile, hostile}});
  Call& call = newer.findings[0].call;
  call.excerpt = {2, hostile + "tv" + hostile};
  call.mark = hostile.size();
  call.markLength = 2;
  call.before = call.after = {{1, hostile}};
  newer.files.push_back("b" + hostile + "!/" + hostile);
  newer.elements = {{hostile, "", ""}};
  RunFacts facts;
  facts.database = facts.started = facts.tool = facts.databaseSha256 = hostile;
  Comparison comparison = compare({facts, {older}}, {facts, {newer, report(hostile)}});
  comparison.notes.push_back(hostile);

  const std::string page = lines(comparison, ComparisonFormat::html);
  EXPECT_EQ(page.find("<script"), std::string::npos);
  EXPECT_NE(page.find("<mark>tv</mark>"), std::string::npos);
  for (const ComparisonFormat format : {ComparisonFormat::text, ComparisonFormat::json, ComparisonFormat::html}) {
    const std::string text = lines(comparison, format);
    EXPECT_NE(text.find("alert(1)"), std::string::npos);
    for (const char* unseen : {"\x1B", "\xE2\x80\xAE", "\xFF"})
      EXPECT_EQ(text.find(unseen), std::string::npos);
  }
  const auto json = nlohmann::json::parse(lines(comparison, ComparisonFormat::json));
  EXPECT_EQ(json.at("compared").size(), 3U);
  EXPECT_EQ(json.at("summary").at("new"), 1);
}

}  // namespace
