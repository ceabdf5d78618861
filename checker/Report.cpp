#include "checker/Report.h"

#include <algorithm>

Verdict verdictOf(bool hasFailed, bool hasFindings, bool hasGaps) {
  return hasFailed     ? Verdict::notChecked
         : hasFindings ? Verdict::findings
         : hasGaps     ? Verdict::incomplete
                       : Verdict::clean;
}

void conclude(ApplicationReport& report) {
  report.verdict =
      verdictOf(!report.failure.empty(), countOf(report, Finding::Status::reported) > 0, !report.notChecked.empty());
}

std::size_t countOf(const ApplicationReport& report, Finding::Status status) {
  return static_cast<std::size_t>(std::count_if(report.findings.begin(), report.findings.end(),
                                                [&](const Finding& finding) { return finding.status == status; }));
}

const char* nameOf(Verdict verdict) {
  static constexpr const char* kNames[] = {"clean", "incomplete", "findings", "could not check"};
  return kNames[static_cast<std::size_t>(verdict)];
}

const char* nameOf(Call::Found found) {
  static constexpr const char* kNames[] = {"variable", "look-up", "flash-variable", "flash-look-up"};
  return kNames[static_cast<std::size_t>(found)];
}

const char* nameOf(Finding::Status status) {
  static constexpr const char* kNames[] = {"reported", "accepted", "known"};
  return kNames[static_cast<std::size_t>(status)];
}
