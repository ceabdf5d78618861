// Reports in every format, read back. What an application brings is hostile: it must stay text.

#include "checker/formats/Formats.h"

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "OwnDirectory.h"
#include "checker/commands/Flash.h"
#include "checker/formats/Evidence.h"
#include "checker/formats/Wording.h"
#include "checker/report/Characters.h"
#include "checker/report/ReportFile.h"
#include "checker/report/ReportJson.h"
#include "checker/report/Sha256.h"

namespace fs = std::filesystem;

namespace {

using Json = nlohmann::ordered_json;
using Status = Finding::Status;

// Ends of elements, strings and lines, references, escapes, a change of the direction of writing, bytes of no encoding.
const std::string kHostile =
    "</script><script>alert('1')//\"]]>--> &amp; {0} [a](b) \x1B[2K\r\n\t%41\\ \xE2\x80\xAE\xC2\x9B\xFF\xED\xA0\x80";

Call callOf(const std::string& path, int line, const std::string& method) {
  Call call;
  call.path = path;
  call.place = {line, line > 0 ? 5 : 0};
  call.engineLine = line;
  call.plugin = "MORVANE-NAVERTIX-TUNER";
  call.method = method;
  call.code = "tv." + method + "()";
  call.excerpt = {line, "a; " + call.code};
  call.mark = 3;
  call.markLength = call.code.size();
  if (line > 1) call.before = {{line - 1, "before"}};
  if (line > 0) call.after = {{line + 1, "after"}};
  return call;
}

Finding findingOf(const std::string& path, int line, const std::string& method, Status status = Status::reported) {
  return {callOf(path, line, method), status, true, "../main.js(1) : UndocumentedAPI '" + method + "' used\n", "0123"};
}

// An application that has everything, each text of it with `text` in it.
ApplicationReport everythingWith(const std::string& text) {
  ApplicationReport report;
  report.application = "app" + text;
  const std::string path = report.application + "!/inner.wgt!/js/" + text + "x";
  report.findings = {findingOf(path, 7, "Get" + text), findingOf(path, 8, "Put" + text, Status::accepted),
                     findingOf(path, 9, "Run", Status::known)};
  Call& call = report.findings[0].call;
  call.found = Call::Found::lookUp;
  call.plugin += text;
  call.engineLine = 3;
  const std::string lead = text.substr(text.size() - std::min<std::size_t>(text.size(), 8));
  call.excerpt.text = lead + "tv.Get" + text + "();<";
  call.mark = lead.size();
  call.markLength = call.excerpt.text.size() - lead.size() - 1;
  call.before[0].text = call.after[0].text = text;
  report.findings[1].acceptance = {"agreed" + text, "owner" + text, "2026-12-31"};
  report.findings[2].call.found = Call::Found::flow;
  report.findings[2].confidence = Finding::Confidence::certain;
  report.findings[2].kind = Finding::Kind::otherPlugin;
  report.findings[2].arguments = "(1, " + text + ")";
  report.findings[2].advice = "advice" + text;
  report.findings[2].trace = {{TraceStep::What::element, "the element" + text, path, {1, 2}, "<object" + text},
                              {TraceStep::What::returned, "returned" + text, path, {}, ""}};
  report.undetermined = {{callOf(path, 10, "Open" + text), "because" + text, report.findings[2].trace}};
  report.notChecked = {{path, "why" + text}};
  report.excluded = {{path, 12}};
  report.elements = {{"P" + text, "id" + text, path}};
  report.bindings = {{"P" + text, "v" + text, path}};
  report.log = {{"f" + text, "line" + text}};
  report.sources = 2;
  report.sha256 = std::string(64, 'a');
  report.rules = {"engine", "flow", "trial"};
  report.judgedCalls = 5;
  report.judgedPlugins = 2;
  report.hasCallsWithoutPlugin = true;
  report.libraries = {{"jQuery" + text, path}};
  report.coverage = {{path, 4, 3, 200, 100}};
  report.browser = "Chromium" + text;
  report.documentedUses = {{"P" + text, "Set" + text, path, 3}};
  report.files = {path, "app"};
  conclude(report);
  return report;
}

ApplicationReport reportWith(const std::string& application, std::vector<Finding> findings,
                             std::vector<NotChecked> notChecked = {}, const std::string& failure = "") {
  ApplicationReport report;
  report.application = application;
  report.findings = std::move(findings);
  report.notChecked = std::move(notChecked);
  report.failure = failure;
  conclude(report);
  return report;
}

std::string written(Format format, const std::vector<ApplicationReport>& reports, const WriterOptions& options = {},
                    bool wasInterrupted = false) {
  std::ostringstream out;
  const std::unique_ptr<ReportWriter> writer = makeWriter(format, out, options);
  for (const ApplicationReport& report : reports)
    writer->add(report);
  writer->end(wasInterrupted);
  return out.str();
}

WriterOptions withDatabase(const std::string& path) {
  WriterOptions options;
  options.run.database = path;
  return options;
}

std::string textOf(const fs::path& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

std::size_t countOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
    ++count;
  return count;
}

TEST(Formats, AreKnownByNameAndBySuffix) {
  struct Row {
    const char* path;
    std::optional<Format> format;
  };
  for (const Row& row : {Row{"a/report.txt", Format::text}, Row{"r.json", Format::json}, Row{"r.jsonl", Format::jsonl},
                         Row{"r.sarif", Format::sarif}, Row{"r.sarif.json", Format::sarif}, Row{"r.xml", Format::junit},
                         Row{"r.html", Format::html}, Row{"r.htm", Format::html}, Row{"r.pdf", std::nullopt},
                         Row{"json", std::nullopt}, Row{".json", std::nullopt}}) {
    EXPECT_EQ(formatOfFile(row.path), row.format) << row.path;
  }
  EXPECT_EQ(formatNamed("junit"), Format::junit);
  EXPECT_EQ(formatNamed("xml"), std::nullopt);
}

TEST(Text, SaysWhatIsKnownInOneLine) {
  Finding behind = findingOf("app!/a.js", 7, "Get");
  behind.isOnDevice = false;
  Finding moved = findingOf("app!/a.js", 7, "Get");
  moved.call.engineLine = 5;
  Finding flash = findingOf("app!/a.swf", 0, "Get");
  flash.call.found = Call::Found::flashLookUp;
  ApplicationReport open = reportWith("app", {});
  open.undetermined = {{callOf("app!/a.js", 2, "Open"), "it opens"}};
  const std::string on = "undocumented API 'Get' on MORVANE-NAVERTIX-TUNER (";
  const std::string found = "app: 1 use of undocumented APIs\n";
  struct Row {
    ApplicationReport report;
    WriterOptions options;
    std::string text;
  };
  WriterOptions engineLines;
  engineLines.engineLines = true;
  WriterOptions color;
  color.color = true;
  for (const Row& row : std::vector<Row>{
           {reportWith("app", {moved}), {}, "app!/a.js:7:5: " + on + "variable; line 5 on the device)\n" + found},
           {reportWith("app", {behind}),
            {},
            "app!/a.js:7:5: " + on + "variable; the device stops before it)\n" + found},
           {reportWith("app", {flash}), {}, "app!/a.swf: " + on + "Flash look-up)\n" + found},
           {reportWith("app",
                       {findingOf("a.js", 1, "Get", Status::accepted), findingOf("a.js", 2, "Get", Status::known)}),
            {},
            "a.js:1:5: note: " + on + "variable; accepted)\na.js:2:5: note: " + on +
                "variable; in the baseline)\napp: clean: 1 accepted, 1 in the baseline\n"},
           {open,
            {},
            "app!/a.js:2:5: could not determine: tv.Open() on MORVANE-NAVERTIX-TUNER (variable; it opens)\n"
            "app: clean: no plug-in object is used; 1 call could not be determined\n"},
           {reportWith("app", {moved, behind}), engineLines,
            "../main.js(1) : UndocumentedAPI 'Get' used\napp: 2 uses of undocumented APIs\n"},
           {reportWith("app", {}, {{"app!/b.swf", "cut"}}), color,
            "\x1b[33mnot checked: \x1b[0mapp!/b.swf: cut\n\x1b[1mapp: \x1b[0m\x1b[33mincomplete, 1 part was not "
            "checked\x1b[0m\n"},
       }) {
    EXPECT_EQ(written(Format::text, {row.report}, row.options), row.text);
  }
  const std::string text = written(Format::text, {everythingWith(kHostile), reportWith("b", {}, {}, "gone")}, {}, true);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'),
            12);  // calls, what was not checked or excluded, the trial's share, verdicts, summary, interrupt, rules
  EXPECT_NE(text.find(": 3 of 4 functions ran (75 %)\n"), std::string::npos);
  EXPECT_EQ(text.find_first_of("\x1b\r\t"), std::string::npos);
  EXPECT_EQ(text.find("\xE2\x80\xAE"), std::string::npos);
  EXPECT_NE(
      text.find("\n2 applications: 1 with findings, 1 could not be checked; 1 use of undocumented APIs (1 accepted, "
                "1 in the baseline not counted)\ninterrupted: "),
      std::string::npos);
}

TEST(JsonReport, HoldsWhatTheReportHolds) {
  const ApplicationReport whole = everythingWith(kHostile);
  const Json json = toJson(whole);
  const Json carried = Json::from_cbor(Json::to_cbor(json));
  EXPECT_EQ(toJson(reportFrom(carried)), json);

  for (const auto& [pointer, value] : std::vector<std::pair<std::string, Json>>{{"/verdict", "good"},
                                                                                {"/findings/0/found", 1},
                                                                                {"/findings/0/excerpt/mark", 10'000},
                                                                                {"/notChecked", "x"}}) {
    Json broken = json;
    broken[Json::json_pointer(pointer)] = value;
    EXPECT_THROW(reportFrom(broken), std::exception) << pointer;
  }
  EXPECT_THROW(reportFrom(Json::array()), std::exception);
}

TEST(JsonReport, IsOneObjectOrALineForEach) {
  const std::vector<ApplicationReport> reports{everythingWith(kHostile), reportWith("b", {}, {}, "gone")};
  const Json json = Json::parse(written(Format::json, reports, withDatabase("db.xml"), true));
  EXPECT_EQ(json.at("version"), 1);
  EXPECT_EQ(json.at("database"), "db.xml");
  EXPECT_EQ(json.at("applications").size(), 2U);
  EXPECT_EQ(json.at("summary").at("verdicts").at("could not check"), 1);
  EXPECT_EQ(json.at("summary").at("interrupted"), true);

  const ApplicationReport read = reportFrom(json.at("applications").at(0));
  EXPECT_EQ(read.application, "app" + utf8(kHostile));
  const Call& call = read.findings[0].call;
  EXPECT_EQ(call.excerpt.text.substr(call.mark, call.markLength), "tv.Get" + utf8(kHostile) + "();");

  std::istringstream lines(written(Format::jsonl, reports, withDatabase("db.xml"), true));
  for (std::string line; std::getline(lines, line);) {
    const Json part = Json::parse(line);
    if (lines.peek() == EOF) {
      EXPECT_EQ(part.at("summary"), json.at("summary"));
    } else {
      EXPECT_TRUE(std::count(json["applications"].begin(), json["applications"].end(), part) == 1) << line;
    }
  }
  EXPECT_EQ(Json::parse(written(Format::json, {})).at("applications").size(), 0U);
}

void takeKeys(const Json& json, std::set<std::string>& keys) {
  for (const auto& item : json.items()) {
    if (json.is_object()) keys.insert(item.key());
    if (item.value().is_structured()) takeKeys(item.value(), keys);
  }
}

TEST(JsonReport, EveryFieldIsDescribed) {
  std::set<std::string> keys;
  WriterOptions options;
  options.run.configFile = options.run.commandLine = options.run.databaseSha256 = options.run.started = "x";
  options.parts = {options.run, options.run};
  for (const std::string& text : {std::string(), kHostile})
    takeKeys(Json::parse(written(Format::json, {everythingWith(text), reportWith("b", {}, {}, "gone")}, options)),
             keys);
  const fs::path data = fs::path(DATABASE).parent_path();
  const std::string schema = textOf(data / "tarvo-check-report.schema.json");
  const std::string document = textOf(data.parent_path() / "docs/json.md");
  EXPECT_GT(keys.size(), 70U);
  for (const std::string& key : keys) {
    EXPECT_NE(schema.find('"' + key + "\":"), std::string::npos) << key;
    EXPECT_NE(document.find('`' + key + '`'), std::string::npos) << key;
  }
}

// What is read from JSON gives, in every format, what the run itself wrote: bytes that are no characters, too.
TEST(ReportFile, GivesEveryFormatAgain) {
  WriterOptions options;
  options.run = {"1.2",
                 "E",
                 "db" + kHostile,
                 std::string(64, 'b'),
                 "config" + kHostile,
                 "2026-11-21T22:06:32Z",
                 "tarvo-check " + kHostile,
                 true,
                 true,
                 true};
  options.trace = true;
  WriterOptions engineLines = options;
  engineLines.engineLines = true;
  ApplicationReport stopped = everythingWith("\xE9");
  stopped.behindStops = 4;
  stopped.findings[0].call.excerpt.text =
      "\xE9"
      "a\xC3";  // the mark ends within a character
  stopped.findings[0].call.mark = 1;
  stopped.findings[0].call.markLength = 1;
  const std::vector<ApplicationReport> reports{everythingWith(kHostile), everythingWith("]]>"), stopped,
                                               reportWith(kHostile, {}, {}, kHostile), reportWith("", {})};
  for (const Format from : {Format::json, Format::jsonl}) {
    for (const bool wasInterrupted : {false, true}) {
      std::vector<ApplicationReport> again;
      const std::vector<ReportedRun> runs =
          readReportText(written(from, reports, options, wasInterrupted),
                         [&](ApplicationReport&& report) { again.push_back(std::move(report)); });
      ASSERT_EQ(runs.size(), 1U);
      EXPECT_TRUE(runs[0].isWhole);
      EXPECT_EQ(runs[0].wasInterrupted, wasInterrupted);
      WriterOptions read = options;
      read.run = runs[0].facts;
      for (const char* name : {"text", "sarif", "json", "jsonl", "junit", "html", "github", "gitlab"}) {
        const Format format = *formatNamed(name);
        EXPECT_EQ(written(format, again, read, wasInterrupted), written(format, reports, options, wasInterrupted))
            << name;
      }
      EXPECT_EQ(written(Format::text, again, engineLines), written(Format::text, reports, engineLines));
    }
  }
}

TEST(ReportFile, SaysWhatIsWrongAndWhere) {
  const std::string line = written(Format::jsonl, {everythingWith("\xE9")});
  const std::string whole = written(Format::json, {everythingWith("\xE9")});
  const auto with = [&](const std::string& old, const std::string& now) {
    std::string text = line;
    text.replace(text.find(old), old.size(), now);
    return text;
  };
  struct Row {
    std::string text;
    std::string says;
  };
  for (const Row& row : std::vector<Row>{
           {"", "line 1, byte 1: "},
           {whole.substr(0, whole.size() / 2), "syntax error"},
           {line.substr(0, line.size() / 2), "line 1, byte "},
           {line + "{\"application\": 1}\n", "line 3, byte 18: "},
           {line + "\n\n  {\n", "line 5, byte "},
           {std::string(1'000'000, '['), "byte 34: it is nested too deep"},
           {"{\"version\":1,\"applications\":" + std::string(1'000'000, '['), "it is nested too deep"},
           {"{\"version\":2,\"applications\":[]}", "line 1, byte 13: it is of version 2; this program reads version 1"},
           {"{\n \"version\": \"2.1.0\", \"runs\": []}", "line 2, byte 19: it is of version \"2.1.0\""},
           {"{\"version\":1,\"tool\":{\"name\":\"x\"}}", "another program"},
           {"{\"version\":1,\"applications\":{\"a\":1}}", "no list"},
           {"{\"a\":1}", "neither an application nor a run"},
           {"[1]", "no object"},
           {"\xFF", "line 1, byte 1: "},
           {with("\"path\":\"617070e9", "\"path\":\"617070ea78"), "does not fit 'path'"},
           {with("\"path\":\"617070e9", "\"path\":\"617070g9"), "does not fit 'path'"},
           {with("\"path\":\"617070e9", "\"nobody\":\"617070e9"), "key 'nobody' not found"},
           {with("\"line\":7", "\"line\":-7"), "no number from 0 to 2147483647: -7"},
           {with("\"line\":7", "\"line\":1e30"), "no number"},
           {with("\"line\":7", "\"line\":99999999999"), "no number"},
           {with("\"mark\":3", "\"mark\":300"), ""},
           {with("\"verdict\":\"findings\"", "\"verdict\":\"good\""), "no such value: good"},
       }) {
    try {
      (void)readReportText(row.text, [](ApplicationReport&&) {});
      ADD_FAILURE() << row.text.substr(0, 200);
    } catch (const std::runtime_error& error) {
      EXPECT_NE(std::string(error.what()).find(row.says), std::string::npos) << error.what();
      EXPECT_NE(std::string(error.what()).find("is no report of this program"), std::string::npos) << error.what();
    }
  }
}

TEST(ReportFile, TellsWhatSeveralRunsHaveInCommon) {
  RunFacts first{"1.2", "E", "a.xml", "aa", "c", "2026-11-21T22:06:32Z", "x", true, false, true};
  RunFacts second{"1.3", "E", "b.xml", "bb", "c", "2026-11-20T22:06:32Z", "y", true, true, false};
  const RunFacts both = together({first, second, first});
  EXPECT_EQ(both.tool, "1.2, 1.3");
  EXPECT_EQ(both.engine, "E");
  EXPECT_EQ(both.database, "a.xml, b.xml");
  EXPECT_EQ(both.databaseSha256 + both.commandLine, "");
  EXPECT_EQ(both.configFile, "c");
  EXPECT_EQ(both.started, second.started);
  EXPECT_TRUE(both.all && both.hasBaseline && !both.allowIncomplete);

  // Files of several runs that were joined; the last one ended too early.
  const std::string line = written(Format::jsonl, {reportWith("a", {})});
  std::size_t applications = 0;
  const std::vector<ReportedRun> runs =
      readReportText(line + line + line.substr(0, line.find('\n')), [&](ApplicationReport&&) { ++applications; });
  EXPECT_EQ(applications, 3U);
  ASSERT_EQ(runs.size(), 3U);
  EXPECT_TRUE(runs[1].isWhole && !runs[2].isWhole);
}

TEST(Sarif, PlacesResultsInPackages) {
  WriterOptions options;
  options.run.hasBaseline = true;
  const std::vector<ApplicationReport> reports{everythingWith(kHostile), reportWith("/x y!/b.js", {}, {}, "gone")};
  const Json run = Json::parse(written(Format::sarif, reports, options)).at("runs").at(0);
  const Json& artifacts = run.at("artifacts");
  const std::string inApplication =
      "%3C/script%3E%3Cscript%3Ealert%28%271%27%29//"
      "%22%5D%5D%3E--%3E%20%26amp%3B%20%7B0%7D%20%5Ba%5D%28b%29%20%1B%5B2K%0D"
      "%0A%09%2541%5C%20%E2%80%AE%C2%9B%FF%ED%A0%80";
  EXPECT_EQ(artifacts[0]["location"]["uri"], "app" + inApplication);
  EXPECT_EQ(artifacts[1]["location"]["uri"], "inner.wgt");
  EXPECT_EQ(artifacts[1]["parentIndex"], 0);
  EXPECT_EQ(artifacts[2]["location"]["uri"], "js/" + inApplication + "x");
  EXPECT_EQ(artifacts[2]["parentIndex"], 1);
  EXPECT_EQ(artifacts[3]["location"]["uri"], "file:///x%20y%21/b.js");

  const Json& results = run.at("results");
  ASSERT_EQ(results.size(), 4U);
  const Json& place = results[0]["locations"][0]["physicalLocation"];
  EXPECT_EQ(place["artifactLocation"]["index"], 2);
  EXPECT_EQ(place["region"]["startLine"], 7);
  EXPECT_EQ(place["region"]["startColumn"], 5);
  EXPECT_EQ(place["region"]["endColumn"], 5 + countCharacters("tv.Get" + kHostile + "();"));
  EXPECT_EQ(place["contextRegion"]["endLine"], 8);
  EXPECT_EQ(results[0]["partialFingerprints"]["tarvoCall/v1"], "0123");
  EXPECT_EQ(results[0]["message"]["text"].get<std::string>().find("[a]"), std::string::npos);
  EXPECT_NE(results[0]["message"]["text"].get<std::string>().find("{{0}} \\[a\\](b)"), std::string::npos);
  EXPECT_EQ(results[0]["baselineState"], "new");
  EXPECT_FALSE(results[0].contains("suppressions"));
  EXPECT_EQ(results[1]["suppressions"][0]["status"], "accepted");
  EXPECT_EQ(results[1]["suppressions"][0]["justification"],
            utf8("agreed" + kHostile + " (owner" + kHostile + ", until 2026-12-31)"));
  EXPECT_EQ(results[2]["baselineState"], "unchanged");
  EXPECT_EQ(results[3]["kind"], "open");

  const Json& invocation = run.at("invocations").at(0);
  EXPECT_EQ(invocation["executionSuccessful"], false);
  EXPECT_EQ(invocation["toolExecutionNotifications"][0]["level"], "warning");
  EXPECT_EQ(invocation["toolExecutionNotifications"][1]["level"], "note");
  EXPECT_EQ(invocation["toolExecutionNotifications"][2]["level"], "error");
  EXPECT_EQ(Json::parse(written(Format::sarif, {}))["runs"][0]["invocations"][0]["executionSuccessful"], true);
  EXPECT_EQ(Json::parse(written(Format::sarif, {}, {}, true))["runs"][0]["invocations"][0]["executionSuccessful"],
            false);
}

TEST(JUnit, HasACaseForEachApplication) {
  const std::vector<ApplicationReport> reports{
      reportWith("clean", {findingOf("a.js", 1, "Get", Status::accepted)}),
      reportWith("incomplete", {}, {{"a.swf", "cut"}}),
      everythingWith(kHostile),
      reportWith("failed", {}, {}, "gone"),
  };
  struct Row {
    bool allowIncomplete, wasInterrupted;
    std::vector<std::string> children;  // the first one of each case
    int failures, errors, skipped;
  };
  for (const Row& row : std::vector<Row>{
           {false, false, {"system-out", "failure", "failure", "error"}, 2, 1, 0},
           {true, true, {"system-out", "skipped", "failure", "error", "error"}, 1, 2, 1},
       }) {
    WriterOptions options;
    options.run.allowIncomplete = row.allowIncomplete;
    TiXmlDocument document;
    document.Parse(written(Format::junit, reports, options, row.wasInterrupted).c_str());
    ASSERT_FALSE(document.Error()) << document.ErrorDesc();
    const TiXmlElement* suite = TiXmlHandle(&document).FirstChild("testsuites").FirstChild("testsuite").Element();
    std::vector<std::string> children;
    std::vector<std::string> names;
    for (const TiXmlElement* each = suite->FirstChildElement("testcase"); each; each = each->NextSiblingElement()) {
      children.push_back(each->FirstChildElement()->Value());
      names.push_back(each->Attribute("name"));
    }
    EXPECT_EQ(children, row.children);
    EXPECT_EQ(names[2], "app" + utf8(printable(kHostile)));
    for (const auto& [name, count] : {std::pair<const char*, int>{"tests", static_cast<int>(children.size())},
                                      {"failures", row.failures},
                                      {"errors", row.errors},
                                      {"skipped", row.skipped}}) {
      EXPECT_EQ(suite->Attribute(name), std::to_string(count)) << name;
    }
  }
}

// What the page holds besides its data.
std::string withoutData(const std::string& page) {
  const std::size_t begin = page.find("{\"applications\":");
  const std::size_t end = page.find("</script>", begin);
  return page.substr(0, begin) + page.substr(end);
}

Json dataOf(const std::string& page) {
  const std::size_t begin = page.find("{\"applications\":");
  return Json::parse(page.substr(begin, page.find("</script>", begin) - begin));
}

// What is markup does not depend on what an application's texts are.
TEST(Markup, IsTheSameForHostileTexts) {
  const auto skeletonOf = [](const std::string& page) {
    std::string skeleton;
    std::copy_if(page.begin(), page.end(), std::back_inserter(skeleton),
                 [](char c) { return std::string("<>\"'").find(c) != std::string::npos; });
    return skeleton;
  };
  const auto pageWith = [](Format format, const std::string& text) {
    return written(format, {everythingWith(text), reportWith("b", {}, {}, text)}, withDatabase("db" + text), true);
  };
  const std::string xml = pageWith(Format::junit, kHostile + "&#x41;");
  const auto inOneKindOfQuotes = [&](const std::string& text) {
    std::string skeleton = skeletonOf(text);
    std::replace(skeleton.begin(), skeleton.end(), '\'', '"');
    return skeleton;
  };
  EXPECT_TRUE(inOneKindOfQuotes(xml) == inOneKindOfQuotes(pageWith(Format::junit, "harmless")));
  EXPECT_GT(countOf(xml, "&lt;script&gt;alert(&apos;1&apos;)"), 5U);
  TiXmlDocument document;
  document.Parse(xml.c_str());
  const TiXmlElement* test =
      TiXmlHandle(&document).FirstChild("testsuites").FirstChild().FirstChild("testcase").Element();
  ASSERT_NE(test, nullptr);
  EXPECT_EQ(test->Attribute("name"), "app" + printable(kHostile) + "&\\x23x41;");

  const std::string page = pageWith(Format::html, kHostile);
  EXPECT_TRUE(withoutData(page) == withoutData(pageWith(Format::html, "harmless")));
  EXPECT_EQ(countOf(page, "<script"), 2U);
  EXPECT_EQ(countOf(page, "\\u003cscript>alert('1')"), countOf(page, "script>alert('1')"));
  EXPECT_EQ(dataOf(page)["applications"][0]["name"], "app" + printable(kHostile));
}

// One rule for everything that people may see, and what is well-formed for programs besides.
TEST(Outputs, ShowNothingThatIsNotSeen) {
  const FlashText listing{RUN_SUCCESS, {"Push " + kHostile}, {}};
  WriterOptions engineLines;
  engineLines.engineLines = true;
  ApplicationReport onDevice = everythingWith(kHostile);
  onDevice.findings[0].engineText = "../" + kHostile + ".js(1) : UndocumentedAPI\n";
  struct Row {
    const char* name;
    std::string text;
    std::size_t lines;  // 0: any number
  };
  std::vector<Row> rows{
      {"listing", plainText(listing), 1},
      {"listing as JSON", jsonText(listing, "lines"), 0},
      {"engine lines", written(Format::text, {onDevice}, engineLines), 7},
  };
  for (const char* name : {"text", "json", "jsonl", "sarif", "junit", "html", "github", "gitlab"}) {
    const ApplicationReport all = everythingWith(kHostile);
    WriterOptions options = withDatabase(kHostile);
    options.trace = true;
    options.run.commandLine = options.run.configFile = kHostile;
    rows.push_back(
        {name, written(*formatNamed(name), {all, reportWith(kHostile, {}, {}, kHostile)}, options, true), 0});
  }
  for (const Row& row : rows) {
    EXPECT_NE(row.text.find("alert("), std::string::npos) << row.name;
    EXPECT_TRUE(row.text == utf8(row.text)) << row.name;
    std::string lines = row.text;
    lines.erase(std::remove(lines.begin(), lines.end(), '\n'), lines.end());
    lines.erase(std::remove(lines.begin(), lines.end(), '\t'), lines.end());
    EXPECT_TRUE(printable(lines) == lines) << row.name;
    const auto count = static_cast<std::size_t>(std::count(row.text.begin(), row.text.end(), '\n'));
    EXPECT_TRUE(row.lines == 0 || row.lines == count) << row.name << ": " << count;
  }
}

TEST(Characters, AreDecodedAndShownByOneRule) {
  struct Row {
    std::string bytes, shown, json;
    std::size_t count;
  };
  for (const Row& row : std::vector<Row>{
           {"a\tb", "a\\x09b", "a\tb", 3},
           {"\xC3\xA9\xE9\x9B\xBB\xF0\x9F\x93\xBA", "\xC3\xA9\xE9\x9B\xBB\xF0\x9F\x93\xBA",
            "\xC3\xA9\xE9\x9B\xBB\xF0\x9F\x93\xBA", 3},
           {"\xC2\x9B\x7F", "\\u009b\\x7f", "\\u009b\\u007f", 2},  // C1, DEL
           {"\x9B", "\\x9b", "\xEF\xBF\xBD", 1},                   // C1 in one byte
           {"\xE2\x80\xAE\xE2\x81\xA6\xE2\x80\xA8", "\\u202e\\u2066\\u2028", "\\u202e\\u2066\\u2028", 3},
           {"\xF3\xA0\x81\x81", "\\u0e0041", "\\udb40\\udc41", 1},                          // a tag
           {"\xED\xA0\x80", "\\xed\\xa0\\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD", 3},  // half a pair
           {"\xC0\xAF\xE0\x80\xAF", "\\xc0\\xaf\\xe0\\x80\\xaf", std::string(), 5},         // too long
           {"\xF4\x90\x80\x80\xC3", "\\xf4\\x90\\x80\\x80\\xc3", std::string(), 5},         // too large; cut
       }) {
    EXPECT_EQ(printable(row.bytes), row.shown);
    EXPECT_EQ(countCharacters(row.bytes), row.count) << row.shown;
    EXPECT_TRUE(row.json.empty() || escapedJson(row.bytes) == row.json) << row.shown;
  }
}

TEST(Verdicts, SayWhatTheyRestOn) {
  struct Row {
    std::uint64_t calls, plugins;
    std::vector<Finding> findings;
    bool hasElement, looksLikeCalls;
    std::string verdict;
  };
  for (const Row& row : std::vector<Row>{
           {0, 0, {}, false, false, "clean: no plug-in object is used"},
           {0, 0, {}, true, false, "clean: no call on a plug-in object was found"},
           {1, 1, {}, true, false, "clean: 1 call on 1 plug-in, documented"},
           {12, 3, {}, true, false, "clean: 12 calls on 3 plug-ins, all documented"},
           {12,
            3,
            {findingOf("a.js", 1, "Get", Status::accepted), findingOf("a.js", 2, "Get", Status::noted)},
            true,
            false,
            "clean: 12 calls on 3 plug-ins: 10 documented, 1 accepted, 1 noted"},
           {0,
            0,
            {},
            false,
            true,
            "nothing could be judged: calls look like plug-in calls, but no plug-in element is known; check the whole "
            "application"},
       }) {
    ApplicationReport report = reportWith("app", row.findings);
    report.judgedCalls = row.calls;
    report.judgedPlugins = row.plugins;
    report.hasCallsWithoutPlugin = row.looksLikeCalls;
    if (row.hasElement) report.elements = {{"P", "id", "a.html"}};
    EXPECT_EQ(verdictOn(report), row.verdict);
    for (const char* name : {"text", "junit", "html", "github"})
      EXPECT_NE(written(*formatNamed(name), {report}).find(row.verdict), std::string::npos) << name;
  }
}

TEST(Findings, AreSortedAndRemarkedOn) {
  ApplicationReport report = reportWith("app", {});
  report.findings = {findingOf("b.js", 1, "focus"), findingOf("a.js", 10, "cmd"), findingOf("a.js", 9, "Get")};
  report.findings[1].call.code = "k.Execute( cmd + 1)";
  conclude(report);
  const std::string on = " on MORVANE-NAVERTIX-TUNER (variable";
  const std::string text = written(Format::text, {report});
  EXPECT_EQ(
      text.find("a.js:9:5: undocumented API 'Get'" + on + ")\na.js:10:5: could not determine: k.Execute( cmd + 1)" +
                on + "; the device reports 'cmd'; the name of the method is a value that the program makes)\n" +
                "b.js:1:5: undocumented API 'focus'" + on + "; every element of a page has this method"),
      0U)
      << text;
  for (const char* code : {"k.Execute(\"cmd\")", "k.Execute('cmd')", "k.cmd(Execute(x))", "k.Execute()"}) {
    Call call = callOf("a.js", 1, "cmd");
    call.code = code;
    Finding finding = findingOf("a.js", 1, "cmd");
    finding.call = call;
    report.findings = {finding};
    conclude(report);
    EXPECT_EQ(report.findings[0].kind, Finding::Kind::undocumented) << code;
  }
}

TEST(NotChecked, IsCountedBehindAThousand) {
  ApplicationReport report = reportWith("app", {}, std::vector<NotChecked>(1234, {"app!/a.swf", "it is cut"}));
  for (const char* name : {"text", "html", "github"}) {
    const std::string text = written(*formatNamed(name), {report});
    EXPECT_EQ(countOf(text, "it is cut"), 1000U) << name;
    EXPECT_NE(text.find("and 234 other parts"), std::string::npos) << name;
  }
  EXPECT_EQ(countOf(written(Format::json, {report}), "it is cut"), 1234U);
}

TEST(Html, HoldsAllCallsWithTheLinesAround) {
  ApplicationReport report = reportWith("app.wgt", {findingOf("app.wgt!/js/a.js", 7, "Get")});
  Call& call = report.findings[0].call;
  call.place.column = 100;  // the excerpt starts behind the line's start
  report.findings[0].trace = {
      {TraceStep::What::element, "the element 'tv'", "app.wgt!/index.html", {3, 1}, "<object>"}};
  report.findings.resize(700, report.findings[0]);
  const Json data = dataOf(written(Format::html, {report}));
  const Json& calls = data["applications"][0]["calls"];
  ASSERT_EQ(calls.size(), 700U);
  EXPECT_EQ(calls[699]["path"], "js/a.js");
  EXPECT_EQ(calls[699]["place"], "7:100");
  EXPECT_EQ(calls[0]["before"][0], (Json{6, "before"}));
  EXPECT_EQ(calls[0]["line"], (Json{"a; ", "tv.Get()", "", 1, 0}));
  EXPECT_EQ(calls[0]["trace"][0],
            (Json{{"text", "the element 'tv'"}, {"where", "index.html:3:1"}, {"source", "<object>"}}));
  EXPECT_EQ(data["run"]["uses"], 700);
}

TEST(GitHub, AnnotatesEachPlace) {
  ApplicationReport report =
      reportWith("a,b.wgt", {findingOf("a,b.wgt!/x:y%.js", 7, "Get"), findingOf("./z.swf", 0, "Put")},
                 {{"a,b.wgt!/c.swf", "cut"}});
  EXPECT_EQ(written(Format::github, {report, reportWith("::error::x", {})}),
            "::error file=z.swf,title=Undocumented API::undocumented API 'Put' on MORVANE-NAVERTIX-TUNER (variable)\n"
            "::error file=a%2Cb.wgt!/x%3Ay%25.js,line=7,col=5,title=Undocumented API::undocumented API 'Get' on "
            "MORVANE-NAVERTIX-TUNER (variable)\n"
            "::warning file=a%2Cb.wgt!/c.swf,title=Not checked::not checked: a,b.wgt!/c.swf: cut\n"
            "a,b.wgt: 2 uses of undocumented APIs\n: :error: :x: clean: no plug-in object is used\n"
            "2 applications: 1 clean, 1 with findings; 2 uses of undocumented APIs\n");
}

// The map leads to files that are there, and never out of its folder.
using RepositoryPathsTest = OwnDirectory;
TEST_F(RepositoryPathsTest, AreThoseOfFilesThatAreThere) {
  for (const char* file : {"src/js/main.js", "src/x.js", "own.js", "outside.js"})
    write(file, "1");
  const RepositoryPaths paths({{"d/app.wgt!/www", "src"}, {"./d/app.wgt!/www/js/own/", "."}, {"d/app.wgt!/up", "src"}});
  for (const auto& [path, expected] : std::vector<std::pair<std::string, std::string>>{
           {"./d/app.wgt!/www/js/main.js", "src/js/main.js"},
           {"d/app.wgt!/www/x.js", "src/x.js"},
           {"d/app.wgt!/www/js/own/own.js", "own.js"},
           {"d/app.wgt!/www/made.js", "d/app.wgt!/www/made.js"},
           {"d/app.wgt!/www2/x.js", "d/app.wgt!/www2/x.js"},
           {"d/app.wgt!/www/../../outside.js", "d/app.wgt!/www/../../outside.js"},
           {"d/app.wgt!/up//etc/passwd", "d/app.wgt!/up//etc/passwd"},
           {"d/app.wgt!/www/js", "d/app.wgt!/www/js"},
           {"./other.js", "other.js"},
       }) {
    EXPECT_EQ(paths.of(path), expected);
  }
  WriterOptions options;
  options.paths = paths;
  const ApplicationReport report = reportWith("d/app.wgt", {findingOf("d/app.wgt!/www/x.js", 7, "Get")});
  for (const auto& [format, text] :
       {std::pair{Format::github, "file=src/x.js,"}, {Format::gitlab, "\"src/x.js\""}, {Format::sarif, "\"src/x.js\""}})
    EXPECT_NE(written(format, {report}, options).find(text), std::string::npos) << text;
}

TEST(GitLab, HasAnIssueForWhatCounts) {
  const std::vector<ApplicationReport> reports{
      reportWith("a", {findingOf("a/x.js", 7, "Get"), findingOf("a/x.js", 8, "Get", Status::accepted)},
                 {{"a/c", "cut"}}),
      reportWith("b", {findingOf("b/x.js", 7, "Get")}), reportWith("c", {}, {}, "gone")};
  const Json issues = Json::parse(written(Format::gitlab, reports, {}, true));
  std::set<std::string> fingerprints;
  std::vector<std::string> checks;
  for (const Json& issue : issues) {
    fingerprints.insert(issue.at("fingerprint").get<std::string>());
    checks.push_back(issue.at("check_name"));
  }
  EXPECT_EQ(checks, (std::vector<std::string>{"undocumented-api", "accepted-api", "not-checked", "undocumented-api",
                                              "could-not-check", "could-not-check"}));
  EXPECT_EQ(fingerprints.size(), issues.size());
  EXPECT_EQ(issues[0]["location"], (Json{{"path", "a/x.js"}, {"lines", {{"begin", 7}}}}));
  EXPECT_EQ(issues[0]["severity"], "major");
  EXPECT_EQ(Json::parse(written(Format::gitlab, {})), Json::array());
}

TEST(Sarif, ATraceIsACodeFlow) {
  Finding finding = findingOf("app!/a.js", 7, "Get");
  finding.trace = {{TraceStep::What::element, "the element 'tv'", "app!/index.html", {3, 2}, "<object>"},
                   {TraceStep::What::call, "the call", "app!/a.js", {7, 5}, "tv.Get()"}};
  const Json run = Json::parse(written(Format::sarif, {reportWith("app", {finding})})).at("runs").at(0);
  const Json steps = run["results"][0]["codeFlows"][0]["threadFlows"][0]["locations"];
  ASSERT_EQ(steps.size(), 2U);
  EXPECT_EQ(steps[0]["location"]["message"]["text"], "the element 'tv'");
  EXPECT_EQ(steps[0]["location"]["physicalLocation"]["region"]["startColumn"], 2);
}

TEST(Evidence, SaysWhatTheRunWas) {
  WriterOptions options = withDatabase(DATABASE);
  addEvidence(options.run);
  EXPECT_EQ(options.run.databaseSha256, sha256OfFile(DATABASE));
  EXPECT_EQ(options.run.started.size(), std::string("2026-11-21T22:06:32Z").size());
  EXPECT_NE(options.run.commandLine.find("checker-tests"), std::string::npos);
  const std::string report = written(Format::json, {}, options);
  for (const std::string& part : {options.run.databaseSha256, options.run.started})
    EXPECT_NE(report.find(part), std::string::npos);
}

TEST(Sha256, IsThatOfOtherPrograms) {
  const fs::path path = fs::path(testing::TempDir()) / "tarvo-sha256";
  struct Row {
    std::size_t size;
    const char* digest;
  };
  for (const Row& row : {Row{0, "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
                         Row{55, "9f4390f8d30c2dd92ec9f095b65e2b9ae9b0a925a5258e241c9f1e910f734318"},
                         Row{56, "b35439a4ac6f0948b6d6f9e3c6af0f5f590ce20f1bde7090ef7970686ec6738a"},
                         Row{1'000'000, "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"}}) {
    std::ofstream(path, std::ios::binary) << std::string(row.size, 'a');
    EXPECT_EQ(sha256OfFile(path), row.digest) << row.size;
  }
  fs::remove(path);
  EXPECT_EQ(sha256OfFile(path), "");
  EXPECT_EQ(sha256OfFile("/dev/null"), "");
}

}  // namespace
