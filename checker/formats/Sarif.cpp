// SARIF, written as reports come: results first, then the files that they are in, then what the run has to tell. A
// trace becomes a code flow. Test: tests/checker/Formats_test.cpp; tests/groups/formats asks validators.

#include "checker/formats/Sarif.h"

#include <algorithm>
#include <map>
#include <vector>

#include "checker/formats/JsonFormats.h"
#include "checker/formats/Wording.h"
#include "checker/report/Characters.h"

using Json = nlohmann::ordered_json;

namespace {

constexpr const char* kSchema =
    "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json";
constexpr const char* kRule = "TARVO1";
constexpr const char* kDeprecatedRule = "TARVO5";
constexpr const char* kFingerprint = "tarvoCall/v1";
constexpr int kIndent = 8;

constexpr const char* kNotCheckedNotice = "TARVO2";
constexpr const char* kFailedNotice = "TARVO3";
constexpr const char* kInterruptedNotice = "TARVO4";
constexpr const char* kExcludedNotice = "TARVO6";

Json contentOf(const std::string& text) {
  return {{"text", text}};
}

// A message can hold links in brackets and places for arguments in braces; what an application brings is neither.
std::string messageText(const std::string& text) {
  std::string escaped;
  for (const char c : printable(text)) {
    if (c == '[' || c == ']') escaped += '\\';
    escaped.append(c == '{' || c == '}' ? 2 : 1, c);
  }
  return escaped;
}

Json undocumentedRule() {
  Json rule{{"id", kRule}, {"name", "UndocumentedApi"}};
  rule["shortDescription"] = contentOf("A method of a plug-in object is called that the platform does not document.");
  rule["fullDescription"] = contentOf(
      "An undocumented method may be gone, or mean something else, in the platform's next release. A host refuses an "
      "application that calls one.");
  rule["help"] = {{"text",
                   "Call a method that the API database lists for this plug-in. Names are compared letter by letter, "
                   "so 'getVolume' "
                   "is not 'GetVolume'. If the method is documented and the database is old, pass the current one with "
                   "--database."},
                  {"markdown",
                   "Call a method that the API database lists for this plug-in. Names are compared letter by letter, "
                   "so `getVolume` "
                   "is not `GetVolume`. If the method is documented and the database is old, pass the current one with "
                   "`--database`."}};
  rule["defaultConfiguration"] = {{"level", "error"}};
  return rule;
}

Json deprecatedRule() {
  Json rule{{"id", kDeprecatedRule}, {"name", "DeprecatedApi"}};
  rule["shortDescription"] = contentOf("A method of a plug-in object is called that the platform advises against.");
  rule["fullDescription"] = contentOf(
      "A deprecated method is documented, and may be gone in a later release of the platform. It counts as a finding "
      "with --deny-deprecated only.");
  rule["help"] = contentOf("Call the method that the message names instead, if it names one.");
  rule["defaultConfiguration"] = {{"level", "note"}};
  return rule;
}

// What the driver can say: its rules, and its notices.
Json driverOf(const std::string& version) {
  const auto notice = [](const char* id, const char* name, const char* text) {
    return Json{{"id", id}, {"name", name}, {"shortDescription", contentOf(text)}};
  };
  Json json{{"name", "tarvo-check"}, {"version", version}};
  json["rules"] = Json::array({undocumentedRule(), deprecatedRule()});
  json["notifications"] = Json::array({
      notice(kNotCheckedNotice, "NotChecked", "A part of an application was not looked at."),
      notice(kFailedNotice, "CouldNotCheck", "An application could not be checked."),
      notice(kExcludedNotice, "Excluded", "The user did not want a file or folder of an application to be looked at."),
      notice(kInterruptedNotice, "Interrupted", "The run ended before all applications were checked."),
  });
  return json;
}

// The files that results are in, each once. A file in a package is one below it.
class Artifacts {
 public:
  explicit Artifacts(RepositoryPaths paths) : paths_(std::move(paths)) {}

  // The artifact of the file that the user knows as `path`, in `application`.
  Json locationOf(std::string path, const std::string& application) {
    if (paths_.isMapped(path)) return placeOf(indexOf(paths_.of(path), -1));
    if (path.size() > application.size() && path.back() == '!') path.pop_back();  // an entry without a name
    // An application's own name can hold what stands between a package and its entry.
    const bool isInside = path.compare(0, application.size(), application) == 0;
    std::size_t from = isInside ? application.size() : 0;
    std::size_t begin = 0;
    int index = -1;
    for (std::size_t end = 0; end != std::string::npos;) {
      end = path.find("!/", from);
      index = indexOf(path.substr(begin, end - begin), index);
      begin = from = end + 2;
    }
    return placeOf(index);
  }

  const Json& list() const { return list_; }

 private:
  Json placeOf(int index) const {
    return {{"uri", list_[static_cast<std::size_t>(index)].at("location").at("uri")}, {"index", index}};
  }

  int indexOf(const std::string& path, int parent) {
    const auto [known, isNew] = known_.try_emplace({parent, path}, static_cast<int>(list_.size()));
    if (isNew) {
      const std::string uri = uriOf(path);
      Json artifact{{"location", {{"uri", uri.empty() ? "." : uri}}}, {"roles", {"analysisTarget"}}};
      if (parent >= 0) artifact["parentIndex"] = parent;
      list_.push_back(artifact);
    }
    return known->second;
  }

  RepositoryPaths paths_;
  Json list_ = Json::array();
  std::map<std::pair<int, std::string>, int> known_;
};

class SarifWriter : public ReportWriter {
 public:
  SarifWriter(std::ostream& out, const WriterOptions& options)
      : out_(out), options_(options), artifacts_(options.paths) {
    out_ << "{\n  \"$schema\": \"" << kSchema << "\",\n  \"version\": \"2.1.0\",\n  \"runs\": [\n    {\n"
         << "      \"tool\": " << jsonText({{"driver", driverOf(options.run.tool)}}, kIndent) << ",\n"
         << "      \"columnKind\": \"unicodeCodePoints\",\n      \"results\": [";
  }

  void add(const ApplicationReport& report) override {
    rules_.add(report);
    for (const Finding& finding : report.findings)
      addResult(resultOf(finding, report.application));
    for (const Undetermined& item : report.undetermined)
      addResult(resultOf(item, report.application));
    for (const NotChecked& item : report.notChecked) {
      notify(kNotCheckedNotice, "warning", "not checked: " + item.part + ": " + item.reason,
             artifacts_.locationOf(item.part, report.application));
    }
    for (const Excluded& item : report.excluded) {
      notify(kExcludedNotice, "note", "excluded: " + item.path + ": " + counted(item.files, "file", "files"),
             artifacts_.locationOf(item.path, report.application));
    }
    if (report.verdict == Verdict::notChecked) {
      isSuccess_ = false;
      notify(kFailedNotice, "error", report.application + ": " + verdictOn(report),
             artifacts_.locationOf(report.application, report.application));
    }
  }

  void end(bool wasInterrupted) override {
    if (wasInterrupted) {
      isSuccess_ = false;
      notify(kInterruptedNotice, "error", kInterrupted, nullptr);
    }
    Json invocation{{"executionSuccessful", isSuccess_}};
    if (!notices_.empty()) invocation["toolExecutionNotifications"] = notices_;
    if (!options_.run.configFile.empty()) invocation["properties"]["configFile"] = options_.run.configFile;
    if (const std::string rules = rules_.text(); !rules.empty()) invocation["properties"]["rules"] = rules;
    out_ << (hasResults_ ? "\n      " : "") << "],\n      \"artifacts\": " << jsonText(artifacts_.list(), kIndent)
         << ",\n      \"invocations\": " << jsonText(Json::array({invocation}), kIndent) << "\n    }\n  ]\n}\n";
    out_.flush();
  }

 private:
  // What findings and calls without a verdict have in common.
  Json resultOf(const Call& call, const std::string& message, const std::string& application) {
    Json result{{"ruleId", kRule}, {"ruleIndex", 0}, {"message", contentOf(messageText(message))}};
    Json location{{"artifactLocation", artifacts_.locationOf(call.path, application)}};
    if (call.place.line > 0) location.update(regionsOf(call));
    result["locations"] = Json::array({{{"physicalLocation", location}}});
    return result;
  }

  static Json regionsOf(const Call& call) {
    const int column = std::max(call.place.column, 1);
    const std::string_view line = call.excerpt.text;
    const std::string_view marked = line.substr(call.mark, call.markLength);
    Json region{{"startLine", call.place.line}, {"startColumn", column}};
    if (!marked.empty()) {
      region["endColumn"] = column + static_cast<int>(countCharacters(marked));
      region["snippet"] = contentOf(utf8(marked));
    }
    std::string context;
    for (const SourceLine& before : call.before)
      context += before.text + '\n';
    context.append(line) += '\n';
    for (const SourceLine& after : call.after)
      context += after.text + '\n';
    const Json around{{"startLine", call.place.line - static_cast<int>(call.before.size())},
                      {"endLine", call.place.line + static_cast<int>(call.after.size())},
                      {"snippet", contentOf(utf8(context))}};
    return {{"region", region}, {"contextRegion", around}};
  }

  void addFlow(Json& result, const std::vector<TraceStep>& trace, const std::string& application) {
    if (trace.empty()) return;
    Json steps = Json::array();
    for (const TraceStep& step : trace) {
      Json location{{"artifactLocation", artifacts_.locationOf(step.path, application)}};
      if (step.place.line > 0) {
        location["region"] = {{"startLine", step.place.line}, {"startColumn", std::max(step.place.column, 1)}};
        if (!step.source.empty()) location["region"]["snippet"] = contentOf(utf8(step.source));
      }
      steps.push_back({{"location", {{"physicalLocation", location}, {"message", contentOf(messageText(step.text))}}}});
    }
    result["codeFlows"] = Json::array({{{"threadFlows", Json::array({{{"locations", steps}}})}}});
  }

  Json resultOf(const Finding& finding, const std::string& application) {
    Json result =
        resultOf(finding.call, messageOf(finding) + " in " + placeOf(finding.call) + " (" + remarksOn(finding) + ")",
                 application);
    if (finding.kind == Finding::Kind::deprecated) result.update({{"ruleId", kDeprecatedRule}, {"ruleIndex", 1}});
    result["level"] = finding.status == Finding::Status::noted ? "note" : "error";
    if (!finding.fingerprint.empty()) result["partialFingerprints"] = {{kFingerprint, finding.fingerprint}};
    if (options_.run.hasBaseline || finding.status == Finding::Status::known)
      result["baselineState"] = finding.status == Finding::Status::known ? "unchanged" : "new";
    if (finding.status == Finding::Status::accepted) {
      const std::string why = acceptanceOf(finding);
      result["suppressions"] =
          Json::array({{{"kind", "external"},
                        {"status", "accepted"},
                        {"justification", why.empty() ? "The method is accepted for this run." : why}}});
    }
    result["properties"] = {
        {"onDevice", finding.isOnDevice}, {"confidence", nameOf(finding.confidence)}, {"kind", nameOf(finding.kind)}};
    addFlow(result, finding.trace, application);
    return result;
  }

  Json resultOf(const Undetermined& item, const std::string& application) {
    Json result =
        resultOf(item.call, messageOf(item) + " in " + placeOf(item.call) + " (" + remarksOn(item) + ")", application);
    result["kind"] = "open";
    result["level"] = "none";
    addFlow(result, item.trace, application);
    if (options_.run.hasBaseline) result["baselineState"] = "new";
    return result;
  }

  void addResult(const Json& result) {
    out_ << (hasResults_ ? ",\n" : "\n") << "        " << jsonText(result, kIndent + 2);
    hasResults_ = true;
  }

  void notify(const char* id, const char* level, const std::string& text, const Json& artifact) {
    Json notice{{"descriptor", {{"id", id}}}, {"level", level}, {"message", contentOf(messageText(text))}};
    if (!artifact.is_null())
      notice["locations"] = Json::array({{{"physicalLocation", {{"artifactLocation", artifact}}}}});
    notices_.push_back(notice);
  }

  std::ostream& out_;
  WriterOptions options_;
  Artifacts artifacts_;
  Json notices_ = Json::array();
  bool hasResults_ = false;
  bool isSuccess_ = true;
  RulesRun rules_;
};

}  // namespace

std::unique_ptr<ReportWriter> makeSarifWriter(std::ostream& out, const WriterOptions& options) {
  return std::make_unique<SarifWriter>(out, options);
}
