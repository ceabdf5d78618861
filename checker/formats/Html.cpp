// The page is report.html with report.css and report.js in it, which the build embeds, and the report as JSON. Its
// policy lets the browser run and apply only the one script and the one style whose hashes it names; the script sets
// texts and never markup. Texts are escaped here, by the rule of all formats, and no "<" is left in the JSON, so that
// nothing in it ends its element.
//
// Applications are written as they come; what needs all of them, the script counts.
// Test: tests/checker/Formats_test.cpp; tests/groups/browser opens the page.

#include "checker/formats/Html.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "checker/formats/PageParts.h"
#include "checker/formats/Wording.h"
#include "checker/report/Characters.h"

using Json = nlohmann::ordered_json;

namespace {

constexpr std::size_t kCutLine = 157;  // a line of so many bytes may have been longer

// For style and script, by Verdict.
constexpr const char* kClasses[] = {"clean", "incomplete", "findings", "failed"};

// `path` as it stands in its application.
std::string inside(const std::string& path, const std::string& application) {
  return printable(pathIn(application, path));
}

// A line of source: its number and its text, with a third value if it was cut.
Json lineOf(const SourceLine& line) {
  Json json = Json::array({line.number, printableSource(line.text)});
  if (line.text.size() >= kCutLine) json.push_back(1);
  return json;
}

Json linesOf(const std::vector<SourceLine>& lines) {
  Json list = Json::array();
  for (const SourceLine& line : lines)
    list.push_back(lineOf(line));
  return list;
}

// The line of a call in three pieces: before the call, the call, behind it; then whether it was cut in front, and
// behind.
Json calledLine(const Call& call) {
  const std::string_view text = call.excerpt.text;
  const std::string_view lead = text.substr(0, call.mark);
  const bool isCutBefore =
      call.place.column > 0 && static_cast<std::size_t>(call.place.column - 1) > countCharacters(lead);
  return Json::array({printableSource(lead), printableSource(text.substr(call.mark, call.markLength)),
                      printableSource(text.substr(call.mark + call.markLength)), isCutBefore ? 1 : 0,
                      text.size() >= kCutLine ? 1 : 0});
}

Json traceOf(const std::vector<TraceStep>& trace, const std::string& application) {
  Json steps = Json::array();
  for (const TraceStep& step : trace) {
    steps.push_back({{"text", printable(step.text)},
                     {"where", placeOf(inside(step.path, application), step.place)},
                     {"source", printableSource(step.source)}});
  }
  return steps;
}

// "7:5"; empty if it is not known.
std::string positionOf(Position place) {
  return placeOf("", place).substr(place.line > 0 ? 1 : 0);
}

// What findings and calls without a verdict have in common.
Json jsonOf(const Call& call, const std::string& remarks, const std::string& application) {
  return {
      {"method", printable(call.method)}, {"plugin", printable(call.plugin)}, {"path", inside(call.path, application)},
      {"place", positionOf(call.place)},  {"remarks", printable(remarks)},    {"number", call.excerpt.number},
      {"line", calledLine(call)},         {"before", linesOf(call.before)},   {"after", linesOf(call.after)}};
}

Json jsonOf(const Finding& finding, const std::string& application) {
  Json json = jsonOf(finding.call, remarksOn(finding), application);
  // The usual message is put together by the script: there may be tens of thousands.
  if (finding.kind != Finding::Kind::undocumented) json["message"] = printable(messageOf(finding));
  json.update({{"state", nameOf(finding.status)},
               {"confidence", nameOf(finding.confidence)},
               {"device", finding.isOnDevice},
               {"id", finding.fingerprint},
               {"terms", explanationsOf(finding)}});
  if (finding.kind == Finding::Kind::deprecated) json["deprecated"] = true;
  if (!finding.trace.empty()) json["trace"] = traceOf(finding.trace, application);
  return json;
}

Json jsonOf(const Undetermined& item, const std::string& application) {
  Json json = jsonOf(item.call, remarksOn(item), application);
  json["message"] = printable(messageOf(item));
  json["state"] = "undetermined";
  json["terms"] = Json::array();
  if (!item.trace.empty()) json["trace"] = traceOf(item.trace, application);
  return json;
}

Json notCheckedOf(const ApplicationReport& report) {
  Json parts = Json::array();
  for (std::size_t i = 0; i < std::min(report.notChecked.size(), kMaxNotCheckedLines); ++i) {
    const NotChecked& item = report.notChecked[i];
    parts.push_back({inside(item.part, report.application), printable(item.reason)});
  }
  return parts;
}

// Elements and variables: kind, plug-in, name, file.
Json pluginsOf(const ApplicationReport& report) {
  Json rows = Json::array();
  const auto add = [&](const char* kind, const std::string& plugin, const std::string& name, const std::string& path) {
    rows.push_back({kind, printable(plugin), printable(name), inside(path, report.application)});
  };
  for (const PluginElement& item : report.elements)
    add("element", item.plugin, item.id, item.path);
  for (const Binding& binding : report.bindings)
    add("variable", binding.plugin, binding.variable, binding.path);
  return rows;
}

// Names and values of what the verdict rests on.
Json factsOf(const ApplicationReport& report) {
  Json facts = Json::array();
  const auto add = [&](const char* name, const std::string& value) {
    if (!value.empty()) facts.push_back({name, printable(value)});
  };
  add("SHA-256", report.sha256);
  for (const Excluded& item : report.excluded)
    add("Excluded", inside(item.path, report.application) + ": " + counted(item.files, "file", "files"));
  RulesRun rules;
  rules.add(report);
  add("Rules that ran", rules.text());
  if (report.verdict != Verdict::notChecked) {
    add("Looked at", counted(report.sources, "web source", "web sources") + ", " +
                         counted(report.flashFiles, "Flash file", "Flash files"));
    add("Judged",
        counted(report.judgedCalls, "call", "calls") + " on " + counted(report.judgedPlugins, "plug-in", "plug-ins"));
  }
  for (const Library& library : report.libraries)
    add("Known library", library.name + " in " + inside(library.path, report.application));
  add("Browser of the trial run", report.browser);
  for (const Coverage& file : report.coverage) {
    add("Ran in the trial", inside(file.path, report.application) + ": " + std::to_string(file.functionsRun) + " of " +
                                counted(file.functions, "function", "functions") + ", " +
                                std::to_string(file.bytesRun) + " of " + counted(file.bytes, "byte", "bytes"));
  }
  return facts;
}

Json jsonOf(const ApplicationReport& report) {
  Json calls = Json::array();
  for (const Finding& finding : report.findings)
    calls.push_back(jsonOf(finding, report.application));
  for (const Undetermined& item : report.undetermined)
    calls.push_back(jsonOf(item, report.application));
  return {{"name", printable(report.application)},
          {"verdict", kClasses[static_cast<std::size_t>(report.verdict)]},
          {"says", printable(verdictOn(report))},
          {"seconds", report.seconds},
          {"facts", factsOf(report)},
          {"notChecked", notCheckedOf(report)},
          {"missed", report.notChecked.size()},
          {"restNotChecked", restOfNotChecked(report)},
          {"plugins", pluginsOf(report)},
          {"calls", std::move(calls)}};
}

// A run of several that a report was put together of: "2026-11-21T22:06:32Z, tarvo-check 1.0.0, database db.xml
// (SHA-256
// ...): tarvo-check app.wgt"
std::string factsText(const RunFacts& run) {
  std::string text =
      run.started + (run.started.empty() ? "" : ", ") + "tarvo-check " + run.tool + ", database " + run.database;
  if (!run.databaseSha256.empty()) text += " (SHA-256 " + run.databaseSha256 + ")";
  if (!run.commandLine.empty()) text += ": " + run.commandLine;
  return text;
}

// JSON that can stand in a page.
std::string scriptText(const Json& json) {
  std::string text;
  for (const char c : escapedJson(json.dump())) {
    if (c == '<') {
      text += "\\u003c";
    } else {
      text += c;
    }
  }
  return text;
}

// `text` with each @NAME@ of `values` replaced. What is put in is not read again.
std::string filled(std::string_view text, const std::map<std::string_view, std::string_view>& values) {
  std::string result;
  while (!text.empty()) {
    const std::size_t begin = text.find('@');
    const std::size_t end = begin == std::string_view::npos ? begin : text.find('@', begin + 1);
    if (end == std::string_view::npos) break;
    result += text.substr(0, begin);
    result += values.at(text.substr(begin + 1, end - begin - 1));
    text.remove_prefix(end + 1);
  }
  return result.append(text);
}

class HtmlWriter : public ReportWriter {
 public:
  HtmlWriter(std::ostream& out, const WriterOptions& options) : out_(out), options_(options) {
    const std::map<std::string_view, std::string_view> values{
        {"CSS_HASH", kCssHash}, {"JS_HASH", kJsHash}, {"CSS", kCss}, {"JS", kJs}};
    const std::string_view page = kHtml;
    const std::size_t data = page.find(kData);
    out_ << filled(page.substr(0, data), values) << "{\"applications\":[";
    rest_ = filled(page.substr(data + kData.size()), values);
  }

  void add(const ApplicationReport& report) override {
    Json json = jsonOf(report);
    for (Json& call : json["calls"]) {
      for (Json& term : call["terms"])
        term = terms_.try_emplace(term.get<std::string>(), terms_.size()).first->second;
    }
    out_ << (totals_.applications == 0 ? "\n" : ",\n") << scriptText(json);
    totals_.add(report);
  }

  void end(bool wasInterrupted) override {
    const Json run{{"summary", printable(summaryOf(totals_))},
                   {"uses", totals_.of(Finding::Status::reported) - totals_.deprecated},
                   {"seconds", totals_.seconds},
                   {"interrupted", wasInterrupted},
                   {"facts", facts()},
                   {"terms", terms()}};
    out_ << "\n],\n\"run\":" << scriptText(run) << '}' << rest_;
    out_.flush();
  }

 private:
  static constexpr std::string_view kData = "@DATA@";

  Json facts() const {
    Json facts = Json::array();
    const auto add = [&](const char* name, const std::string& value) {
      if (!value.empty()) facts.push_back({name, printable(value)});
    };
    add("Checker", "tarvo-check " + options_.run.tool);
    add("Engine", options_.run.engine);
    add("Database", options_.run.database);
    add("SHA-256 of the database", options_.run.databaseSha256);
    add("Started", options_.run.started);
    add("Command line", options_.run.commandLine);
    add("Config file", options_.run.configFile);
    add("Calls", options_.run.all ? "all that were found" : "those that the device would report");
    for (const RunFacts& part : options_.parts)
      add("One of its runs", factsText(part));
    return facts;
  }

  Json terms() const {
    std::vector<std::string> sentences(terms_.size());
    for (const auto& [sentence, number] : terms_)
      sentences[number] = sentence;
    return sentences;
  }

  std::ostream& out_;
  WriterOptions options_;
  std::map<std::string, std::size_t> terms_;  // sentences that calls refer to by their numbers
  std::string rest_;                          // of the page, behind its data
  Totals totals_;
};

}  // namespace

std::unique_ptr<ReportWriter> makeHtmlWriter(std::ostream& out, const WriterOptions& options) {
  return std::make_unique<HtmlWriter>(out, options);
}
