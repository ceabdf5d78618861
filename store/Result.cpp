// Reports and results, one into the other. Paths count from the application, calls are sorted, and the digest is made
// of all that is kept: equal results have equal digests, wherever and whenever they were made.
// Test: tests/store/Store_test.cpp.

#include "store/Result.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <tuple>

#include "store/Content.h"

namespace store {
namespace {

constexpr std::size_t kDigest = 16;  // bytes: as many as no two results come to share

auto tied(const ResultCall& call) {
  return std::tie(call.file, call.place.line, call.place.column, call.plugin, call.method, call.code, call.found,
                  call.fingerprint, call.engineLine, call.confidence, call.isOnDevice, call.reason);
}

ResultCall callOf(const ApplicationReport& report, const Call& call) {
  ResultCall result;
  result.plugin = call.plugin;
  result.method = call.method;
  result.file = inside(report.application, call.path);
  result.place = call.place;
  result.engineLine = call.engineLine;
  result.found = call.found;
  result.code = call.code;
  return result;
}

ResultCall callOf(const ApplicationReport& report, const Finding& finding) {
  ResultCall result = callOf(report, finding.call);
  result.confidence = finding.confidence;
  result.isOnDevice = finding.isOnDevice;
  result.fingerprint = std::strtoull(finding.fingerprint.c_str(), nullptr, 16);
  return result;
}

Call callOn(const ResultCall& stored, const std::string& application) {
  Call call;
  call.path = outside(application, stored.file);
  call.place = stored.place;
  call.engineLine = stored.engineLine;
  call.plugin = stored.plugin;
  call.method = stored.method;
  call.found = stored.found;
  call.code = stored.code;
  call.excerpt.number = stored.place.line;
  return call;
}

Finding findingOn(const ResultCall& stored, const std::string& application, Documented documented) {
  char digits[17];
  (void)std::snprintf(digits, sizeof digits, "%016" PRIx64, stored.fingerprint);
  Finding finding{};
  finding.call = callOn(stored, application);
  finding.isOnDevice = stored.isOnDevice;
  finding.fingerprint = digits;
  finding.confidence = stored.confidence;
  finding.kind = documented == Documented::forAnother ? Finding::Kind::otherPlugin : Finding::Kind::undocumented;
  finding.status = statusFor(finding, false);
  return finding;
}

// "www/" is the same folder as "www".
std::size_t sizeWithoutSlashes(const std::string& application) {
  std::size_t size = application.size();
  while (size > 1 && application[size - 1] == '/')
    --size;
  return size;
}

bool isInside(const std::string& file) {
  return file.empty() || file.front() == '!' || file.front() == '/';
}

// Texts and numbers one behind the other, each with its end.
class Serial {
 public:
  void add(std::string_view text) {
    add(std::uint64_t{text.size()});
    bytes_ += text;
  }
  void add(std::uint64_t number) {
    bytes_ += std::to_string(number);
    bytes_ += ' ';
  }
  const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

}  // namespace

std::string inside(const std::string& application, const std::string& path) {
  const std::size_t size = sizeWithoutSlashes(application);
  const bool isIn = path.compare(0, size, application, 0, size) == 0 && isInside(path.substr(size));
  return isIn ? path.substr(size) : path;
}

std::string outside(const std::string& application, const std::string& file) {
  return isInside(file) ? application.substr(0, sizeWithoutSlashes(application)) + file : file;
}

std::string Result::digest() const {
  Serial serial;
  for (const std::string& text : {sha256, suffix, failure})
    serial.add(text);
  for (const std::uint64_t number :
       {size, sources, flashFiles, judgedCalls, judgedPlugins, std::uint64_t{hasCallsWithoutPlugin}})
    serial.add(number);
  for (const ResultCall& call : calls) {
    for (const std::string* text : {&call.plugin, &call.method, &call.file, &call.code, &call.reason})
      serial.add(*text);
    for (const int number : {call.place.line, call.place.column, call.engineLine, static_cast<int>(call.found),
                             static_cast<int>(call.confidence), static_cast<int>(call.isOnDevice)})
      serial.add(static_cast<std::uint64_t>(static_cast<std::int64_t>(number)));
    serial.add(call.fingerprint);
  }
  serial.add(std::uint64_t{notChecked.size()});
  for (const NotChecked& missed : notChecked) {
    serial.add(missed.part);
    serial.add(missed.reason);
  }
  serial.add(std::uint64_t{elements.size()});
  for (const PluginElement& element : elements) {
    for (const std::string* text : {&element.plugin, &element.id, &element.path})
      serial.add(*text);
  }
  for (const Library& library : libraries) {
    serial.add(library.name);
    serial.add(library.path);
  }
  return store::sha256(serial.bytes()).substr(0, kDigest);
}

Result resultOf(const ApplicationReport& report) {
  Result result;
  result.sha256 = bytesOfHex(report.content);
  result.suffix = report.contentSuffix;
  result.size = report.size;
  result.failure = report.failure;
  result.seconds = report.seconds;
  result.sources = report.sources;
  result.flashFiles = report.flashFiles;
  result.judgedCalls = report.judgedCalls;
  result.judgedPlugins = report.judgedPlugins;
  result.hasCallsWithoutPlugin = report.hasCallsWithoutPlugin;
  for (const std::vector<Finding>* findings : {&report.findings, &report.documented}) {
    for (const Finding& finding : *findings) {
      // Calls of deprecated methods are documented ones, which are in the other list.
      if (finding.kind != Finding::Kind::deprecated) result.calls.push_back(callOf(report, finding));
    }
  }
  for (const Undetermined& item : report.undetermined) {
    result.calls.push_back(callOf(report, item.call));
    result.calls.back().reason = item.reason;
  }
  std::sort(result.calls.begin(), result.calls.end(),
            [](const ResultCall& a, const ResultCall& b) { return tied(a) < tied(b); });
  for (const NotChecked& missed : report.notChecked)
    result.notChecked.push_back({inside(report.application, missed.part), missed.reason});
  for (const PluginElement& element : report.elements)
    result.elements.push_back({element.plugin, element.id, inside(report.application, element.path)});
  for (const Library& library : report.libraries)
    result.libraries.push_back({library.name, inside(report.application, library.path)});
  return result;
}

ApplicationReport reportOn(const Result& result, const std::string& application, const std::vector<std::string>& rules,
                           const Judge& judge) {
  ApplicationReport report;
  report.application = application;
  report.content = hexOf(result.sha256);
  report.contentSuffix = result.suffix;
  if (result.suffix != "/") report.sha256 = report.content;
  report.size = result.size;
  report.isStored = true;
  report.failure = result.failure;
  report.seconds = result.seconds;
  report.sources = result.sources;
  report.flashFiles = result.flashFiles;
  report.rules = rules;
  report.judgedCalls = result.judgedCalls;
  report.judgedPlugins = result.judgedPlugins;
  report.hasCallsWithoutPlugin = result.hasCallsWithoutPlugin;
  for (const ResultCall& call : result.calls) {
    if (!call.reason.empty()) {
      report.undetermined.push_back({callOn(call, application), call.reason});
      continue;
    }
    Documented documented = judge(call.plugin, call.method);
    // Only who followed the object knows that it is this plug-in's.
    const bool isFollowed = call.confidence >= Finding::Confidence::certain || call.found >= Call::Found::flow;
    if (documented == Documented::forAnother && !isFollowed) documented = Documented::forIt;
    auto& list = documented == Documented::forIt ? report.documented : report.findings;
    list.push_back(findingOn(call, application, documented));
  }
  for (const NotChecked& missed : result.notChecked)
    report.notChecked.push_back({outside(application, missed.part), missed.reason});
  for (const PluginElement& element : result.elements)
    report.elements.push_back({element.plugin, element.id, outside(application, element.path)});
  for (const Library& library : result.libraries)
    report.libraries.push_back({library.name, outside(application, library.path)});
  conclude(report);
  return report;
}

}  // namespace store
