// Order, verdict and words of a report. What counts is decided here and nowhere else: the formats only show it.

#include "checker/report/Report.h"

#include <algorithm>
#include <tuple>

#include "checker/report/Remarks.h"

namespace {

std::tuple<const std::string&, int, int> placeOf(const Call& call) {
  return {call.path, call.place.line, call.place.column};
}

template <typename T>
void sortByPlace(std::vector<T>& items) {
  std::stable_sort(items.begin(), items.end(),
                   [](const T& a, const T& b) { return placeOf(a.call) < placeOf(b.call); });
}

}  // namespace

Verdict verdictOf(bool hasFailed, bool hasFindings, bool hasGaps) {
  return hasFailed     ? Verdict::notChecked
         : hasFindings ? Verdict::findings
         : hasGaps     ? Verdict::incomplete
                       : Verdict::clean;
}

Finding::Status statusFor(const Finding& finding, bool isPerPlugin) {
  const bool isSure = finding.confidence != Finding::Confidence::possible;
  const bool counts = finding.kind == Finding::Kind::undocumented || isPerPlugin;
  return isSure && counts ? Finding::Status::reported : Finding::Status::noted;
}

std::string pathIn(const std::string& application, const std::string& path) {
  const bool isInside = path.size() > application.size() && path.compare(0, application.size(), application) == 0;
  const std::size_t start = isInside ? path.find_first_not_of("!/", application.size()) : 0;
  return start == std::string::npos ? path : path.substr(start);
}

void forgetSource(Call& call) {
  call.excerpt = {};
  call.mark = call.markLength = 0;
  call.before.clear();
  call.after.clear();
}

void sortByPlace(ApplicationReport& report) {
  sortByPlace(report.findings);
  sortByPlace(report.undetermined);
}

void conclude(ApplicationReport& report) {
  sortByPlace(report);
  addRemarks(report);
  report.verdict =
      verdictOf(!report.failure.empty(), countOf(report, Finding::Status::reported) > 0, !report.notChecked.empty());
}

std::size_t countOf(const ApplicationReport& report, Finding::Status status) {
  return static_cast<std::size_t>(std::count_if(report.findings.begin(), report.findings.end(),
                                                [&](const Finding& finding) { return finding.status == status; }));
}

std::size_t countDeprecated(const ApplicationReport& report, Finding::Status status) {
  return static_cast<std::size_t>(std::count_if(
      report.findings.begin(), report.findings.end(),
      [&](const Finding& finding) { return finding.status == status && finding.kind == Finding::Kind::deprecated; }));
}

const char* nameOf(Verdict verdict) {
  static constexpr const char* kNames[] = {"clean", "incomplete", "findings", "could not check"};
  return kNames[static_cast<std::size_t>(verdict)];
}

const char* nameOf(Call::Found found) {
  static constexpr const char* kNames[] = {"variable", "look-up", "flash-variable", "flash-look-up",
                                           "flow",     "trial",   "trial-uncalled"};
  return kNames[static_cast<std::size_t>(found)];
}

const char* nameOf(Finding::Status status) {
  static constexpr const char* kNames[] = {"reported", "accepted", "known", "noted"};
  return kNames[static_cast<std::size_t>(status)];
}

const char* nameOf(Finding::Confidence confidence) {
  static constexpr const char* kNames[] = {"possible", "likely", "certain", "confirmed"};
  return kNames[static_cast<std::size_t>(confidence)];
}

const char* nameOf(Finding::Kind kind) {
  static constexpr const char* kNames[] = {"undocumented", "otherPlugin", "computed", "deprecated"};
  return kNames[static_cast<std::size_t>(kind)];
}

const char* nameOf(TraceStep::What what) {
  static constexpr const char* kNames[] = {"element", "look-up", "variable", "property", "parameter", "return", "call"};
  return kNames[static_cast<std::size_t>(what)];
}
