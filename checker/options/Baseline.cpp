// Reads an earlier report and takes its findings out of a new one.
//
// Findings are compared by what stays when lines move: fingerprint, plug-in and method. Each finding of the earlier
// report excuses one of the new report, so that a call that was copied is new. Applications are found again by name. A
// single application is found again whatever its name is, because packages are often named by their version. Test:
// tests/checker/Baseline_test.cpp.

#include "checker/options/Baseline.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "checker/options/Suggestion.h"
#include "checker/report/Characters.h"
#include "checker/report/ReportFile.h"

namespace {

// The last component of a path, "app.wgt" of "dist/app.wgt" and "www" of "www/".
std::string fileNameOf(const std::string& path) {
  const std::size_t last = path.find_last_not_of('/');
  if (last == std::string::npos) return path;
  const std::string trimmed = path.substr(0, last + 1);
  return trimmed.substr(trimmed.rfind('/') + 1);
}

}  // namespace

Baseline::Baseline(const std::string& path) {
  const auto take = [&](ApplicationReport&& report) {
    Counts counts;
    for (const Finding& finding : report.findings) {
      // An exception that is withdrawn must show again.
      if (finding.status != Finding::Status::accepted) ++counts[identityOf(finding)];
    }
    applications_.emplace_back(report.application, std::move(counts));
  };
  try {
    (void)readReport(path, take);
  } catch (const std::runtime_error& error) {
    std::error_code none;
    const std::string meant = std::filesystem::exists(path, none) ? "" : didYouMeanFile(path);
    throw std::runtime_error("the baseline '" + path + "' " + error.what() + meant);
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
