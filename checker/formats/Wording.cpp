// Test: tests/checker/Formats_test.cpp.

#include "checker/formats/Wording.h"

namespace {

// What was found and does not count, with a blank before it.
std::string notCounted(std::size_t accepted, std::size_t known) {
  std::string text;
  if (accepted > 0) text = std::to_string(accepted) + " accepted";
  if (known > 0) text += (text.empty() ? "" : ", ") + std::to_string(known) + " in the baseline";
  return text.empty() ? text : " (" + text + " not counted)";
}

std::string remarksOn(const Call& call) {
  std::string text = wordFor(call.found);
  if (call.engineLine > 0 && call.engineLine != call.place.line) {
    text += "; line " + std::to_string(call.engineLine) + " on the device";
  }
  return text;
}

}  // namespace

std::string counted(std::uint64_t count, const char* one, const char* several) {
  return std::to_string(count) + ' ' + (count == 1 ? one : several);
}

std::string placeOf(const Call& call) {
  std::string place = call.path;
  if (call.place.line > 0) place += ":" + std::to_string(call.place.line);
  if (call.place.line > 0 && call.place.column > 0) place += ":" + std::to_string(call.place.column);
  return place;
}

const char* wordFor(Call::Found found) {
  static constexpr const char* kWords[] = {"variable", "look-up", "Flash variable", "Flash look-up"};
  return kWords[static_cast<std::size_t>(found)];
}

std::string messageOf(const Call& call) {
  return "undocumented API '" + call.method + "' on " + call.plugin;
}

std::string messageOf(const Undetermined& item) {
  return "could not determine: " + item.call.code + " on " + item.call.plugin;
}

std::string remarksOn(const Finding& finding) {
  std::string text = remarksOn(finding.call);
  if (finding.status == Finding::Status::accepted) text += "; accepted";
  if (finding.status == Finding::Status::known) text += "; in the baseline";
  if (finding.status != Finding::Status::accepted && !finding.isOnDevice) text += "; the device stops before it";
  return text;
}

std::string remarksOn(const Undetermined& item) {
  return remarksOn(item.call) + "; " + item.reason;
}

std::string verdictOn(const ApplicationReport& report) {
  const std::string verdicts[] = {
      "only documented APIs",
      "incomplete, " + counted(report.notChecked.size(), "part was", "parts were") + " not checked",
      counted(countOf(report, Finding::Status::reported), "use", "uses") + " of undocumented APIs",
      "could not check: " + report.failure,
  };
  return verdicts[static_cast<std::size_t>(report.verdict)] +
         notCounted(countOf(report, Finding::Status::accepted), countOf(report, Finding::Status::known));
}

void Totals::add(const ApplicationReport& report) {
  ++applications;
  ++verdicts[static_cast<std::size_t>(report.verdict)];
  for (const Finding& finding : report.findings)
    ++statuses[static_cast<std::size_t>(finding.status)];
  undetermined += report.undetermined.size();
  notChecked += report.notChecked.size();
  seconds += report.seconds;
}

std::string summaryOf(const Totals& totals) {
  struct Part {
    Verdict verdict;
    const char* words;
  };
  std::string parts;
  for (const Part& part :
       {Part{Verdict::clean, " clean"}, Part{Verdict::incomplete, " incomplete"},
        Part{Verdict::findings, " with findings"}, Part{Verdict::notChecked, " could not be checked"}}) {
    const std::size_t count = totals.of(part.verdict);
    if (count > 0) parts += (parts.empty() ? ": " : ", ") + std::to_string(count) + part.words;
  }
  return counted(totals.applications, "application", "applications") + parts + "; " +
         counted(totals.of(Finding::Status::reported), "use", "uses") + " of undocumented APIs" +
         notCounted(totals.of(Finding::Status::accepted), totals.of(Finding::Status::known));
}
