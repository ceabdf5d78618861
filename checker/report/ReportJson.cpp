// Reports as JSON, and back: one pair of functions, `jsonOf` and `read`, for each struct. What is empty or has its
// usual value is left out where a field came later than version 1, so that earlier reports are read as they are. Test:
// tests/checker/Formats_test.cpp.

#include "checker/report/ReportJson.h"

#include <cstdint>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <string>

using Json = nlohmann::ordered_json;

namespace {

// The value that has this name, of an enumeration whose last value is `last`.
template <typename Named>
Named named(const std::string& name, Named last) {
  for (int i = 0; i <= static_cast<int>(last); ++i) {
    const auto value = static_cast<Named>(i);
    if (name == nameOf(value)) return value;
  }
  throw std::invalid_argument("no such value: " + name);
}

// A number that counts, which a file can have made anything of.
template <typename Number>
Number countIn(const Json& json) {
  constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<Number>::max());
  const bool isCount = json.is_number_unsigned() || (json.is_number_integer() && json.get<std::int64_t>() >= 0);
  if (!isCount || json.get<std::uint64_t>() > kMost)
    throw std::out_of_range("no number from 0 to " + std::to_string(kMost) + ": " + json.dump());
  return json.get<Number>();
}

// The same; 0 if it is not there.
template <typename Number>
Number countIn(const Json& json, const char* name) {
  return json.contains(name) ? countIn<Number>(json.at(name)) : Number{0};
}

Position positionIn(const Json& json) {
  return {countIn<int>(json, "line"), countIn<int>(json, "column")};
}

template <typename T>
Json listOf(const std::vector<T>& items);
template <typename T>
std::vector<T> itemsOf(const Json& list);

Json jsonOf(const SourceLine& line) {
  return {{"line", line.number}, {"text", line.text}};
}

void read(const Json& json, SourceLine& line) {
  line = {countIn<int>(json.at("line")), json.at("text")};
}

Json jsonOf(const Call& call) {
  Json json{{"path", call.path}};
  // What is not known is not there.
  if (call.place.line > 0) json.update({{"line", call.place.line}, {"column", call.place.column}});
  if (call.engineLine > 0) json["engineLine"] = call.engineLine;
  json.update({{"plugin", call.plugin},
               {"method", call.method},
               {"found", nameOf(call.found)},
               {"code", call.code},
               {"excerpt",
                {{"line", call.excerpt.number},
                 {"text", call.excerpt.text},
                 {"mark", call.mark},
                 {"markLength", call.markLength}}},
               {"before", listOf(call.before)},
               {"after", listOf(call.after)}});
  return json;
}

// All of a call but what stands around it.
void readCall(const Json& json, Call& call) {
  call.path = json.at("path");
  call.place = positionIn(json);
  call.engineLine = countIn<int>(json, "engineLine");
  call.plugin = json.at("plugin");
  call.method = json.at("method");
  call.found = named(json.at("found"), Call::Found::trialUncalled);
  call.code = json.at("code");
}

void read(const Json& json, Call& call) {
  readCall(json, call);
  const Json& excerpt = json.at("excerpt");
  read(excerpt, call.excerpt);
  call.mark = countIn<std::size_t>(excerpt.at("mark"));
  call.markLength = countIn<std::size_t>(excerpt.at("markLength"));
  if (call.mark > call.excerpt.text.size() || call.markLength > call.excerpt.text.size() - call.mark) {
    throw std::out_of_range("the mark of an excerpt lies outside of it");
  }
  call.before = itemsOf<SourceLine>(json.at("before"));
  call.after = itemsOf<SourceLine>(json.at("after"));
}

Json jsonOf(const TraceStep& step) {
  Json json{{"what", nameOf(step.what)}, {"text", step.text}, {"path", step.path}};
  if (step.place.line > 0) json.update({{"line", step.place.line}, {"column", step.place.column}});
  if (!step.source.empty()) json["source"] = step.source;
  return json;
}

void read(const Json& json, TraceStep& step) {
  step = {named(json.at("what"), TraceStep::What::call), json.at("text"), json.at("path"), positionIn(json),
          json.value("source", "")};
}

// Writes and reads a list that is not there if it is empty.
template <typename T>
void addList(Json& json, const char* name, const std::vector<T>& items) {
  if (!items.empty()) json[name] = listOf(items);
}

template <typename T>
void readList(const Json& json, const char* name, std::vector<T>& items) {
  if (json.contains(name)) items = itemsOf<T>(json.at(name));
}

// The same with texts.
void addText(Json& json, const char* name, const std::string& text) {
  if (!text.empty()) json[name] = text;
}

Json jsonOf(const Acceptance& acceptance) {
  Json json = Json::object();
  addText(json, "reason", acceptance.reason);
  addText(json, "owner", acceptance.owner);
  addText(json, "expires", acceptance.expires);
  return json;
}

void read(const Json& json, Acceptance& acceptance) {
  acceptance = {json.value("reason", ""), json.value("owner", ""), json.value("expires", "")};
}

Json jsonOf(const Finding& finding) {
  Json json = jsonOf(finding.call);
  json.update({{"status", nameOf(finding.status)},
               {"onDevice", finding.isOnDevice},
               {"engineText", finding.engineText},
               {"fingerprint", finding.fingerprint},
               {"confidence", nameOf(finding.confidence)}});
  if (finding.kind != Finding::Kind::undocumented) json["kind"] = nameOf(finding.kind);
  addText(json, "arguments", finding.arguments);
  addText(json, "advice", finding.advice);
  addList(json, "trace", finding.trace);
  if (Json acceptance = jsonOf(finding.acceptance); !acceptance.empty()) json["acceptance"] = std::move(acceptance);
  return json;
}

void read(const Json& json, Finding& finding) {
  read(json, finding.call);
  finding.status = named(json.at("status"), Finding::Status::noted);
  finding.isOnDevice = json.at("onDevice");
  finding.engineText = json.at("engineText");
  finding.fingerprint = json.at("fingerprint");
  finding.confidence = named(json.value("confidence", "likely"), Finding::Confidence::confirmed);
  finding.kind = named(json.value("kind", "undocumented"), Finding::Kind::deprecated);
  finding.arguments = json.value("arguments", "");
  finding.advice = json.value("advice", "");
  readList(json, "trace", finding.trace);
  if (json.contains("acceptance")) read(json.at("acceptance"), finding.acceptance);
}

Json jsonOf(const Undetermined& item) {
  Json json = jsonOf(item.call);
  json["reason"] = item.reason;
  addList(json, "trace", item.trace);
  return json;
}

void read(const Json& json, Undetermined& item) {
  read(json, item.call);
  item.reason = json.at("reason");
  readList(json, "trace", item.trace);
}

Json jsonOf(const NotChecked& item) {
  return {{"part", item.part}, {"reason", item.reason}};
}

void read(const Json& json, NotChecked& item) {
  item = {json.at("part"), json.at("reason")};
}

Json jsonOf(const Excluded& item) {
  return {{"path", item.path}, {"files", item.files}};
}

void read(const Json& json, Excluded& item) {
  item = {json.at("path"), json.at("files")};
}

Json jsonOf(const PluginElement& element) {
  return {{"plugin", element.plugin}, {"id", element.id}, {"path", element.path}};
}

void read(const Json& json, PluginElement& element) {
  element = {json.at("plugin"), json.at("id"), json.at("path")};
}

Json jsonOf(const Binding& binding) {
  return {{"plugin", binding.plugin}, {"variable", binding.variable}, {"path", binding.path}};
}

void read(const Json& json, Binding& binding) {
  binding = {json.at("plugin"), json.at("variable"), json.at("path")};
}

Json jsonOf(const Library& library) {
  return {{"name", library.name}, {"path", library.path}};
}

void read(const Json& json, Library& library) {
  library = {json.at("name"), json.at("path")};
}

Json jsonOf(const Coverage& file) {
  return {{"path", file.path},
          {"functions", file.functions},
          {"functionsRun", file.functionsRun},
          {"bytes", file.bytes},
          {"bytesRun", file.bytesRun}};
}

void read(const Json& json, Coverage& file) {
  const auto count = [&](const char* name) { return countIn<std::uint64_t>(json.at(name)); };
  file = {json.at("path"), count("functions"), count("functionsRun"), count("bytes"), count("bytesRun")};
}

Json jsonOf(const DocumentedUse& use) {
  return {{"plugin", use.plugin}, {"method", use.method}, {"path", use.path}, {"calls", use.calls}};
}

void read(const Json& json, DocumentedUse& use) {
  use = {json.at("plugin"), json.at("method"), json.at("path"), countIn<std::uint64_t>(json.at("calls"))};
}

Json jsonOf(const std::string& text) {
  return text;
}

void read(const Json& json, std::string& text) {
  text = json;
}

Json jsonOf(const LogLine& line) {
  return {{"function", line.function}, {"text", line.text}};
}

void read(const Json& json, LogLine& line) {
  line = {json.at("function"), json.at("text")};
}

template <typename T>
Json listOf(const std::vector<T>& items) {
  Json list = Json::array();
  for (const T& item : items)
    list.push_back(jsonOf(item));
  return list;
}

template <typename T>
std::vector<T> itemsOf(const Json& list) {
  std::vector<T> items(list.size());
  for (std::size_t i = 0; i < items.size(); ++i)
    read(list.at(i), items[i]);
  return items;
}

Json filesOf(const ApplicationReport& report) {
  Json list = Json::array();
  for (const std::string& path : report.files)
    list.push_back({{"path", path}});
  return list;
}

void readFiles(const Json& list, ApplicationReport& report) {
  for (const Json& file : list)
    report.files.push_back(file.at("path"));
}

// Calls of documented methods can be many: nothing that stands around them.
Json documentedOf(const ApplicationReport& report) {
  Json list = Json::array();
  for (const Finding& finding : report.documented) {
    Json json = jsonOf(finding.call);
    for (const char* name : {"excerpt", "before", "after"})
      json.erase(name);
    json.update({{"onDevice", finding.isOnDevice},
                 {"fingerprint", finding.fingerprint},
                 {"confidence", nameOf(finding.confidence)}});
    list.push_back(json);
  }
  return list;
}

void readDocumented(const Json& list, ApplicationReport& report) {
  for (const Json& json : list) {
    Finding finding{};
    readCall(json, finding.call);
    finding.isOnDevice = json.at("onDevice");
    finding.fingerprint = json.at("fingerprint");
    finding.confidence = named(json.at("confidence"), Finding::Confidence::confirmed);
    report.documented.push_back(finding);
  }
}

}  // namespace

Json toJson(const ApplicationReport& report) {
  Json json{{"application", report.application}};
  addText(json, "sha256", report.sha256);
  json["verdict"] = nameOf(report.verdict);
  addText(json, "failure", report.failure);
  json.update({{"findings", listOf(report.findings)},
               {"undetermined", listOf(report.undetermined)},
               {"notChecked", listOf(report.notChecked)},
               {"elements", listOf(report.elements)},
               {"bindings", listOf(report.bindings)},
               {"sources", report.sources},
               {"flashFiles", report.flashFiles},
               {"seconds", report.seconds}});
  addList(json, "excluded", report.excluded);
  addList(json, "rules", report.rules);
  json.update({{"judgedCalls", report.judgedCalls}, {"judgedPlugins", report.judgedPlugins}});
  if (report.behindStops > 0) json["behindStops"] = report.behindStops;
  if (report.hasCallsWithoutPlugin) json["callsWithoutPlugin"] = true;
  addList(json, "libraries", report.libraries);
  addList(json, "coverage", report.coverage);
  addText(json, "browser", report.browser);
  addList(json, "documentedUses", report.documentedUses);
  if (!report.files.empty()) json["files"] = filesOf(report);
  addText(json, "change", report.change);
  addText(json, "content", report.content);
  addText(json, "contentSuffix", report.contentSuffix);
  if (!report.content.empty()) json["size"] = report.size;
  if (!report.documented.empty()) json["documented"] = documentedOf(report);
  if (report.isStored) json["stored"] = true;
  addList(json, "log", report.log);
  return json;
}

Json toJson(const Finding& finding) {
  return jsonOf(finding);
}

Json toJson(const NotChecked& item) {
  return jsonOf(item);
}

ApplicationReport reportFrom(const Json& json) {
  ApplicationReport report;
  report.application = json.at("application");
  report.sha256 = json.value("sha256", "");
  report.verdict = named(json.at("verdict"), Verdict::notChecked);
  report.failure = json.value("failure", "");
  report.findings = itemsOf<Finding>(json.at("findings"));
  report.undetermined = itemsOf<Undetermined>(json.at("undetermined"));
  report.notChecked = itemsOf<NotChecked>(json.at("notChecked"));
  report.elements = itemsOf<PluginElement>(json.at("elements"));
  report.bindings = itemsOf<Binding>(json.at("bindings"));
  report.sources = countIn<std::uint64_t>(json.at("sources"));
  report.flashFiles = countIn<std::uint64_t>(json.at("flashFiles"));
  report.seconds = json.at("seconds");
  readList(json, "excluded", report.excluded);
  readList(json, "rules", report.rules);
  report.judgedCalls = countIn<std::uint64_t>(json, "judgedCalls");
  report.judgedPlugins = countIn<std::uint64_t>(json, "judgedPlugins");
  report.behindStops = countIn<std::uint64_t>(json, "behindStops");
  report.hasCallsWithoutPlugin = json.value("callsWithoutPlugin", false);
  readList(json, "libraries", report.libraries);
  readList(json, "coverage", report.coverage);
  report.browser = json.value("browser", "");
  readList(json, "documentedUses", report.documentedUses);
  if (json.contains("files")) readFiles(json.at("files"), report);
  report.change = json.value("change", "");
  report.content = json.value("content", "");
  report.contentSuffix = json.value("contentSuffix", "");
  report.size = countIn<std::uint64_t>(json, "size");
  if (json.contains("documented")) readDocumented(json.at("documented"), report);
  report.isStored = json.value("stored", false);
  readList(json, "log", report.log);
  return report;
}
