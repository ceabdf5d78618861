// Reports in every format, read back. What an application brings is hostile: it must stay text.

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "checker/ReportJson.h"
#include "checker/ReportWriter.h"
#include "checker/formats/Characters.h"

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
  report.undetermined = {{callOf(path, 10, "Open" + text), "because" + text}};
  report.notChecked = {{path, "why" + text}};
  report.elements = {{"P" + text, "id" + text, path}};
  report.bindings = {{"P" + text, "v" + text, path}};
  report.log = {{"f" + text, "line" + text}};
  report.sources = 2;
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
                "variable; in the baseline)\napp: only documented APIs (1 accepted, 1 in the baseline not counted)\n"},
           {open,
            {},
            "app!/a.js:2:5: could not determine: tv.Open() on MORVANE-NAVERTIX-TUNER (variable; it opens)\n"
            "app: only documented APIs\n"},
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
            9);  // calls, what was not checked, verdicts, summary, interrupt
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
  const Json json = Json::parse(written(Format::json, reports, {"db.xml"}, true));
  EXPECT_EQ(json.at("version"), 1);
  EXPECT_EQ(json.at("database"), "db.xml");
  EXPECT_EQ(json.at("applications").size(), 2U);
  EXPECT_EQ(json.at("summary").at("verdicts").at("could not check"), 1);
  EXPECT_EQ(json.at("summary").at("interrupted"), true);

  const ApplicationReport read = reportFrom(json.at("applications").at(0));
  EXPECT_EQ(read.application, "app" + utf8(kHostile));
  const Call& call = read.findings[0].call;
  EXPECT_EQ(call.excerpt.text.substr(call.mark, call.markLength), "tv.Get" + utf8(kHostile) + "();");

  std::istringstream lines(written(Format::jsonl, reports, {"db.xml"}, true));
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
  takeKeys(Json::parse(written(Format::json, {everythingWith(""), reportWith("b", {}, {}, "gone")})), keys);
  const fs::path data = fs::path(DATABASE).parent_path();
  const std::string schema = textOf(data / "tarvo-check-report.schema.json");
  const std::string document = textOf(data.parent_path() / "docs/json.md");
  EXPECT_GT(keys.size(), 40U);
  for (const std::string& key : keys) {
    EXPECT_NE(schema.find('"' + key + "\":"), std::string::npos) << key;
    EXPECT_NE(document.find('`' + key + '`'), std::string::npos) << key;
  }
}

TEST(Sarif, PlacesResultsInPackages) {
  WriterOptions options;
  options.hasBaseline = true;
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
  EXPECT_EQ(results[2]["baselineState"], "unchanged");
  EXPECT_EQ(results[3]["kind"], "open");

  const Json& invocation = run.at("invocations").at(0);
  EXPECT_EQ(invocation["executionSuccessful"], false);
  EXPECT_EQ(invocation["toolExecutionNotifications"][0]["level"], "warning");
  EXPECT_EQ(invocation["toolExecutionNotifications"][1]["level"], "error");
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
    options.allowIncomplete = row.allowIncomplete;
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

// What is markup does not depend on what an application's texts are.
TEST(Markup, IsTheSameForHostileTexts) {
  const auto skeletonOf = [](const std::string& page) {
    std::string skeleton;
    std::copy_if(page.begin(), page.end(), std::back_inserter(skeleton),
                 [](char c) { return std::string("<>\"'").find(c) != std::string::npos; });
    return skeleton;
  };
  for (const Format format : {Format::html, Format::junit}) {
    const auto pageWith = [&](const std::string& text) {
      return written(format, {everythingWith(text), reportWith("b", {}, {}, text)}, {"db" + text}, true);
    };
    const std::string page = pageWith(kHostile);
    EXPECT_TRUE(skeletonOf(page) == skeletonOf(pageWith("harmless")));
    EXPECT_EQ(page, utf8(page));
    EXPECT_EQ(page.find_first_of("\x1b\r"), std::string::npos);
    EXPECT_EQ(page.find("\xE2\x80\xAE"), std::string::npos);
    EXPECT_EQ(countOf(page, "<script>"), format == Format::html ? 1U : 0U);
    EXPECT_GT(countOf(page, "&lt;script&gt;alert(&#39;1&#39;)"), 5U);
  }
}

TEST(Html, ShowsTheLinesAroundACall) {
  ApplicationReport report = reportWith("app.wgt", {findingOf("app.wgt!/js/a.js", 7, "Get")});
  Call& call = report.findings[0].call;
  call.place.column = 100;  // the excerpt starts behind the line's start
  std::string page = written(Format::html, {report});
  for (const char* part : {"<bdi>js/a.js:7:100</bdi>", "<span class=\"number\">6</span><code>before</code>",
                           "…</span>a; <mark>tv.Get()</mark></code>", "aria-label=\"1 findings\""}) {
    EXPECT_NE(page.find(part), std::string::npos) << part;
  }
  report.findings.assign(700, report.findings[0]);
  page = written(Format::html, {report});
  EXPECT_EQ(countOf(page, "<mark>"), 500U);
  EXPECT_NE(page.find("Only the first 500 calls"), std::string::npos);
  EXPECT_NE(page.find("<b>700</b>"), std::string::npos);
}

}  // namespace
