// Reads an earlier report and takes its findings out of a new one.
//
// Findings are compared by what stays when lines move: fingerprint, plug-in and method. Each finding of the earlier
// report excuses one of the new report, so that a call that was copied is new. Applications are found again by name. A
// single application is found again whatever its name is, because packages are often named by their version. Test:
// tests/checker/Baseline_test.cpp.

#include "checker/options/Baseline.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <stdexcept>

#include "checker/options/Suggestion.h"
#include "checker/report/Characters.h"
#include "checker/report/ReportJson.h"

using Json = nlohmann::ordered_json;

namespace {

constexpr int kVersion = 1;  // of the formats that are read

std::string textOf(const std::string& path) {
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  std::string text;
  char part[4096];
  while (file.read(part, sizeof part) || file.gcount() > 0)
    text.append(part, static_cast<std::size_t>(file.gcount()));
  if (!file.is_open() || file.bad()) {
    throw std::runtime_error("the baseline '" + path + "' cannot be read: " + std::strerror(errno) +
                             didYouMeanFile(path));
  }
  return text;
}

bool isReport(const Json& json) {
  return json.is_object() && json.contains("application");
}

// The applications of a report in the format json; of jsonl, those lines that are one.
std::vector<ApplicationReport> reportsIn(const std::string& text) {
  std::vector<ApplicationReport> reports;
  const Json whole = Json::parse(text, nullptr, false);
  if (whole.is_object() && whole.contains("applications")) {
    if (whole.at("version") != kVersion) throw std::invalid_argument("it is of another version");
    for (const Json& application : whole.at("applications"))
      reports.push_back(reportFrom(application));
    return reports;
  }
  bool isJsonl = false;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    const std::string line = text.substr(at, end - at);
    at = end + 1;
    if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
    const Json json = Json::parse(line);
    isJsonl = isJsonl || isReport(json) || (json.is_object() && json.contains("version"));
    if (json.value("version", kVersion) != kVersion) throw std::invalid_argument("it is of another version");
    if (isReport(json)) reports.push_back(reportFrom(json));
  }
  if (!isJsonl) throw std::invalid_argument("there is no application in it");
  return reports;
}

// The last component of a path, "app.wgt" of "dist/app.wgt" and "www" of "www/".
std::string fileNameOf(const std::string& path) {
  const std::size_t last = path.find_last_not_of('/');
  if (last == std::string::npos) return path;
  const std::string trimmed = path.substr(0, last + 1);
  return trimmed.substr(trimmed.rfind('/') + 1);
}

}  // namespace

Baseline::Baseline(const std::string& path) {
  const std::string text = textOf(path);
  try {
    for (const ApplicationReport& report : reportsIn(text)) {
      Counts counts;
      for (const Finding& finding : report.findings) {
        // An exception that is withdrawn must show again.
        if (finding.status != Finding::Status::accepted) ++counts[identityOf(finding)];
      }
      applications_.emplace_back(report.application, std::move(counts));
    }
  } catch (const std::exception& error) {
    throw std::runtime_error("the baseline '" + path +
                             "' is no report of this program in the format json or jsonl: " + error.what());
  }
}

Baseline::Identity Baseline::identityOf(const Finding& finding) {
  // Not the fingerprint alone: of two methods that happen to have the same one, neither must hide the other.
  // As in the formats, which hold no bytes that are not UTF-8.
  return {finding.fingerprint, utf8(finding.call.plugin), utf8(finding.call.method)};
}

// How many findings of each identity are known for this application: those under its very name, else those under its
// file's name in other folders, where it may have stood then. Of several such applications the one that has most
// counts.
Baseline::Counts Baseline::countsFor(const std::string& application, bool isOnlyApplication) const {
  const auto isNamedSo = [&](const auto& known) { return known.first == application; };
  const bool hasName = std::any_of(applications_.begin(), applications_.end(), isNamedSo);
  const bool isSame = isOnlyApplication && applications_.size() == 1;
  Counts most;
  for (const auto& known : applications_) {
    const bool counts = isSame || (hasName ? isNamedSo(known) : fileNameOf(known.first) == fileNameOf(application));
    if (!counts) continue;
    for (const auto& [identity, count] : known.second) {
      int& sofar = most[identity];
      sofar = std::max(sofar, count);
    }
  }
  return most;
}

void Baseline::apply(ApplicationReport& report, bool isOnlyApplication) const {
  Counts known = countsFor(utf8(report.application), isOnlyApplication);
  for (Finding& finding : report.findings) {
    if (finding.status != Finding::Status::reported) continue;
    const auto excuse = known.find(identityOf(finding));
    if (excuse == known.end() || excuse->second == 0) continue;
    --excuse->second;
    finding.status = Finding::Status::known;
  }
  conclude(report);
}
