// A comparison as text and as JSON, and the words that all its formats share. Test: tests/checker/Comparison_test.cpp;
// tests/groups/formats asks a validator.

#include "checker/formats/ComparisonFormats.h"

#include <utility>

#include "checker/formats/JsonFormats.h"
#include "checker/formats/Wording.h"
#include "checker/report/Characters.h"
#include "checker/report/ReportJson.h"

using Json = nlohmann::ordered_json;
using What = FindingChange::What;

namespace {

constexpr int kVersion = 1;  // of the format json

constexpr const char* kBold = "\x1b[1m";
constexpr const char* kRed = "\x1b[31m";
constexpr const char* kGreen = "\x1b[32m";
constexpr const char* kYellow = "\x1b[33m";
constexpr const char* kPlain = "\x1b[0m";
constexpr const char* kColorOf[] = {kRed, kGreen, kYellow};  // of each FindingChange::What

struct Row {
  ComparisonFormat format;
  const char* name;
  const char* suffix;
};
constexpr Row kFormats[] = {
    {ComparisonFormat::text, "text", ".txt"},
    {ComparisonFormat::json, "json", ".json"},
    {ComparisonFormat::html, "html", ".html"},
};

struct Counts {
  std::uint64_t added = 0;
  std::uint64_t gone = 0;
  std::uint64_t moved = 0;
  std::uint64_t same = 0;
  std::uint64_t notChecked = 0;

  void add(const ApplicationComparison& application) {
    added += application.countOf(What::added);
    gone += application.countOf(What::gone);
    moved += application.countOf(What::moved);
    same += application.same;
    notChecked += application.notChecked.size();
  }
};

Counts countsOf(const Comparison& comparison) {
  Counts counts;
  for (const ApplicationComparison& application : comparison.applications)
    counts.add(application);
  return counts;
}

std::string textOf(const Counts& counts) {
  return std::to_string(counts.added) + " new, " + std::to_string(counts.gone) + " gone, " +
         std::to_string(counts.moved) + " moved, " + std::to_string(counts.same) + " the same" +
         (counts.notChecked > 0 ? "; " + counted(counts.notChecked, "more part", "more parts") + " not checked" : "");
}

// ---- text ----------------------------------------------------------------------------------------------------------

class TextWriter {
 public:
  TextWriter(bool isColored, std::ostream& out) : isColored_(isColored), out_(out) {}

  void write(const Comparison& comparison) {
    for (const std::string& note : comparison.notes)
      out_ << printable("note: " + note) << '\n';
    for (const ApplicationComparison& application : comparison.applications)
      write(application);
    if (comparison.applications.size() != 1) out_ << painted(summaryOf(comparison), kBold) << '\n';
  }

 private:
  std::string painted(const std::string& text, const char* color) const {
    return isColored_ ? color + printable(text) + kPlain : printable(text);
  }

  void write(const ApplicationComparison& application) {
    for (const FindingChange& change : application.findings)
      out_ << painted(placeOf(change.finding.call) + ": ", kBold)
           << painted(lineOn(change), kColorOf[static_cast<std::size_t>(change.what)]) << '\n';
    for (const NotChecked& item : application.notChecked)
      out_ << painted(lineOn(item), kYellow) << '\n';
    for (const CallChange& change : application.calls)
      out_ << printable("calls: " + lineOn(change)) << '\n';
    write("plug-in", application.plugins);
    write("file", application.files);
    const std::string title = titleOf(application);
    for (const std::string& note : application.notes)
      out_ << printable(title + ": note: " + note) << '\n';
    out_ << painted(title + ": ", kBold) << summaryOf(application) << '\n';
  }

  void write(const char* what, const NameChanges& changes) {
    for (const std::string& name : changes.came)
      out_ << printable(std::string(what) + " came: " + name) << '\n';
    for (const std::string& name : changes.went)
      out_ << printable(std::string(what) + " went: " + name) << '\n';
  }

  bool isColored_;
  std::ostream& out_;
};

// ---- JSON ----------------------------------------------------------------------------------------------------------

Json jsonOf(const NameChanges& changes) {
  return {{"came", changes.came}, {"went", changes.went}};
}

Json jsonOf(const FindingChange& change) {
  Json json{{"change", nameOf(change.what)}, {"finding", toJson(change.finding)}};
  if (!change.isInBoth) return json;
  Json& before = json["before"] = {{"path", change.olderPath}};
  if (change.olderPlace.line > 0)
    before.update({{"line", change.olderPlace.line}, {"column", change.olderPlace.column}});
  before["status"] = nameOf(change.olderStatus);
  return json;
}

Json jsonOf(const ApplicationComparison& application) {
  Json json = Json::object();
  const auto addVersion = [&](const char* name, const std::string& path, Verdict verdict) {
    if (!path.empty()) json[name] = {{"application", path}, {"verdict", nameOf(verdict)}};
  };
  addVersion("older", application.older, application.olderVerdict);
  addVersion("newer", application.newer, application.newerVerdict);
  json.update({{"notes", application.notes}, {"same", application.same}});
  for (const char* name : {"findings", "notChecked", "calls"})
    json[name] = Json::array();
  for (const FindingChange& change : application.findings)
    json["findings"].push_back(jsonOf(change));
  for (const NotChecked& item : application.notChecked)
    json["notChecked"].push_back(toJson(item));
  for (const CallChange& change : application.calls)
    json["calls"].push_back(
        {{"plugin", change.plugin}, {"method", change.method}, {"older", change.older}, {"newer", change.newer}});
  json.update({{"plugins", jsonOf(application.plugins)}, {"files", jsonOf(application.files)}});
  return json;
}

Json jsonOf(const RunFacts& facts) {
  Json json{{"tool", facts.tool}, {"engine", facts.engine}, {"database", facts.database}};
  const auto add = [&](const char* name, const std::string& text) {
    if (!text.empty()) json[name] = text;
  };
  add("databaseSha256", facts.databaseSha256);
  add("started", facts.started);
  return json;
}

Json jsonOf(const Comparison& comparison) {
  const Counts counts = countsOf(comparison);
  Json json{{"comparison", kVersion},
            {"older", jsonOf(comparison.older)},
            {"newer", jsonOf(comparison.newer)},
            {"notes", comparison.notes},
            {"compared", Json::array()}};
  for (const ApplicationComparison& application : comparison.applications)
    json["compared"].push_back(jsonOf(application));
  json["summary"] = {{"applications", comparison.applications.size()},
                     {"new", counts.added},
                     {"gone", counts.gone},
                     {"moved", counts.moved},
                     {"same", counts.same},
                     {"notChecked", counts.notChecked}};
  return json;
}

}  // namespace

std::optional<ComparisonFormat> comparisonFormatNamed(const std::string& name) {
  for (const Row& row : kFormats) {
    if (name == row.name) return row.format;
  }
  return std::nullopt;
}

std::optional<ComparisonFormat> comparisonFormatOfFile(const std::string& path) {
  const std::size_t dot = path.rfind('.');
  const std::string suffix = dot == std::string::npos || dot == 0 ? "" : path.substr(dot);
  for (const Row& row : kFormats) {
    if (suffix == row.suffix) return row.format;
  }
  return suffix == ".htm" ? std::optional(ComparisonFormat::html) : std::nullopt;
}

void write(const Comparison& comparison, ComparisonFormat format, bool isColored, std::ostream& out) {
  switch (format) {
    case ComparisonFormat::text:
      TextWriter(isColored, out).write(comparison);
      break;
    case ComparisonFormat::json:
      out << jsonText(jsonOf(comparison), 2) << '\n';
      break;
    case ComparisonFormat::html:
      writePage(comparison, out);
      break;
  }
}

std::string summaryOf(const ApplicationComparison& application) {
  Counts counts;
  counts.add(application);
  return textOf(counts);
}

std::string summaryOf(const Comparison& comparison) {
  return counted(comparison.applications.size(), "application", "applications") + ": " + textOf(countsOf(comparison));
}

std::string lineOn(const FindingChange& change) {
  const bool isNote = !counts(change.finding.status);
  std::string text = std::string(nameOf(change.what)) + ": " + (isNote ? "note: " : "") + messageOf(change.finding) +
                     " (" + remarksOn(change.finding);
  if (change.isInBoth && change.what == What::moved) text += "; was " + placeOf(change.olderPath, change.olderPlace);
  if (change.isInBoth && change.what != What::moved) text += std::string("; was ") + nameOf(change.olderStatus);
  return text + ")";
}

std::string titleOf(const ApplicationComparison& application) {
  if (application.older.empty()) return application.newer + ", which is new";
  if (application.newer.empty()) return application.older + ", which is gone";
  if (application.older == application.newer) return application.newer;
  return application.older + ", now " + application.newer;
}

std::string lineOn(const CallChange& change) {
  return change.plugin + "." + change.method + ": " + counted(change.newer, "call", "calls") + ", before " +
         std::to_string(change.older);
}
