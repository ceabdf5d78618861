// Test: tests/checker/Formats_test.cpp.

#include "checker/ReportJson.h"

#include <iterator>
#include <stdexcept>

using Json = nlohmann::ordered_json;

namespace {

// The value that has this name.
template <typename Named>
Named named(const std::string& name, std::initializer_list<Named> values) {
  for (const Named value : values) {
    if (name == nameOf(value)) return value;
  }
  throw std::invalid_argument("no such value: " + name);
}

template <typename T>
Json listOf(const std::vector<T>& items);
template <typename T>
std::vector<T> itemsOf(const Json& list);

Json jsonOf(const SourceLine& line) {
  return {{"line", line.number}, {"text", line.text}};
}

void read(const Json& json, SourceLine& line) {
  line = {json.at("line"), json.at("text")};
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

void read(const Json& json, Call& call) {
  using Found = Call::Found;
  call.path = json.at("path");
  call.place = {json.value("line", 0), json.value("column", 0)};
  call.engineLine = json.value("engineLine", 0);
  call.plugin = json.at("plugin");
  call.method = json.at("method");
  call.found = named(json.at("found"), {Found::variable, Found::lookUp, Found::flashVariable, Found::flashLookUp});
  call.code = json.at("code");
  const Json& excerpt = json.at("excerpt");
  read(excerpt, call.excerpt);
  call.mark = excerpt.at("mark");
  call.markLength = excerpt.at("markLength");
  if (call.mark > call.excerpt.text.size() || call.markLength > call.excerpt.text.size() - call.mark) {
    throw std::out_of_range("the mark of an excerpt lies outside of it");
  }
  call.before = itemsOf<SourceLine>(json.at("before"));
  call.after = itemsOf<SourceLine>(json.at("after"));
}

Json jsonOf(const Finding& finding) {
  Json json = jsonOf(finding.call);
  json.update({{"status", nameOf(finding.status)},
               {"onDevice", finding.isOnDevice},
               {"engineText", finding.engineText},
               {"fingerprint", finding.fingerprint}});
  return json;
}

void read(const Json& json, Finding& finding) {
  using Status = Finding::Status;
  read(json, finding.call);
  finding.status = named(json.at("status"), {Status::reported, Status::accepted, Status::known});
  finding.isOnDevice = json.at("onDevice");
  finding.engineText = json.at("engineText");
  finding.fingerprint = json.at("fingerprint");
}

Json jsonOf(const Undetermined& item) {
  Json json = jsonOf(item.call);
  json["reason"] = item.reason;
  return json;
}

void read(const Json& json, Undetermined& item) {
  read(json, item.call);
  item.reason = json.at("reason");
}

Json jsonOf(const NotChecked& missed) {
  return {{"part", missed.part}, {"reason", missed.reason}};
}

void read(const Json& json, NotChecked& missed) {
  missed = {json.at("part"), json.at("reason")};
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

}  // namespace

Json toJson(const ApplicationReport& report) {
  Json json{{"application", report.application}, {"verdict", nameOf(report.verdict)}};
  if (!report.failure.empty()) json["failure"] = report.failure;
  json.update({{"findings", listOf(report.findings)},
               {"undetermined", listOf(report.undetermined)},
               {"notChecked", listOf(report.notChecked)},
               {"elements", listOf(report.elements)},
               {"bindings", listOf(report.bindings)},
               {"sources", report.sources},
               {"flashFiles", report.flashFiles},
               {"seconds", report.seconds}});
  if (!report.log.empty()) json["log"] = listOf(report.log);
  return json;
}

ApplicationReport reportFrom(const Json& json) {
  ApplicationReport report;
  report.application = json.at("application");
  report.verdict =
      named(json.at("verdict"), {Verdict::clean, Verdict::incomplete, Verdict::findings, Verdict::notChecked});
  report.failure = json.value("failure", "");
  report.findings = itemsOf<Finding>(json.at("findings"));
  report.undetermined = itemsOf<Undetermined>(json.at("undetermined"));
  report.notChecked = itemsOf<NotChecked>(json.at("notChecked"));
  report.elements = itemsOf<PluginElement>(json.at("elements"));
  report.bindings = itemsOf<Binding>(json.at("bindings"));
  report.sources = json.at("sources");
  report.flashFiles = json.at("flashFiles");
  report.seconds = json.at("seconds");
  if (json.contains("log")) report.log = itemsOf<LogLine>(json.at("log"));
  return report;
}
