// Test: tests/checker/Formats_test.cpp; tests/groups/formats asks another reader.

#include "checker/formats/JUnit.h"

#include <cstdio>

#include "checker/formats/Characters.h"
#include "checker/formats/Wording.h"

namespace {

std::string secondsOf(double seconds) {
  char text[64];
  (void)std::snprintf(text, sizeof text, "%.3f", seconds);
  return text;
}

std::string lineOf(const std::string& text) {
  return markup(text) + '\n';
}

class JUnitWriter : public ReportWriter {
 public:
  JUnitWriter(std::ostream& out, const WriterOptions& options) : out_(out), options_(options) {}

  void add(const ApplicationReport& report) override {
    totals_.add(report);
    std::string failed;  // what makes it fail
    std::string other;
    for (const Finding& finding : report.findings) {
      const bool counts = finding.status == Finding::Status::reported;
      (counts ? failed : other) +=
          lineOf(placeOf(finding.call) + ": " + messageOf(finding.call) + " (" + remarksOn(finding) + ")");
    }
    for (const Undetermined& item : report.undetermined)
      other += lineOf(placeOf(item.call) + ": " + messageOf(item) + " (" + remarksOn(item) + ")");
    for (const NotChecked& missed : report.notChecked)
      (report.verdict == Verdict::findings ? other : failed) +=
          lineOf("not checked: " + missed.part + ": " + missed.reason);

    cases_ += "    <testcase classname=\"tarvo-check\" name=\"" + markup(report.application) + "\" time=\"" +
              secondsOf(report.seconds) + "\">\n";
    if (report.verdict != Verdict::clean) {
      const char* element = elementFor(report.verdict);
      const std::string message = std::string(" message=\"") + markup(verdictOn(report)) + "\"";
      const bool isSkipped = std::string(element) == "skipped";
      const std::string type = isSkipped ? "" : std::string(" type=\"") + nameOf(report.verdict) + "\"";
      cases_ += std::string("      <") + element + message + type + ">" + failed + "</" + element + ">\n";
    }
    if (!other.empty()) cases_ += "      <system-out>" + other + "</system-out>\n";
    cases_ += "    </testcase>\n";
  }

  void end(bool wasInterrupted) override {
    const std::size_t incomplete = totals_.of(Verdict::incomplete);
    const auto count = [](const char* name, std::size_t value) {
      return std::string(" ") + name + "=\"" + std::to_string(value) + "\"";
    };
    const std::string counts =
        count("tests", totals_.applications + (wasInterrupted ? 1 : 0)) +
        count("failures", totals_.of(Verdict::findings) + (options_.allowIncomplete ? 0 : incomplete)) +
        count("errors", totals_.of(Verdict::notChecked) + (wasInterrupted ? 1 : 0));
    const std::string time = " time=\"" + secondsOf(totals_.seconds) + "\"";
    out_ << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites" << counts << time
         << ">\n  <testsuite name=\"tarvo-check\"" << counts
         << count("skipped", options_.allowIncomplete ? incomplete : 0) << time << ">\n"
         << cases_;
    if (wasInterrupted) {
      out_ << "    <testcase classname=\"tarvo-check\" name=\"the whole run\" time=\"0\">\n      <error message=\""
           << kInterrupted << "\" type=\"interrupted\"/>\n    </testcase>\n";
    }
    out_ << "  </testsuite>\n</testsuites>\n";
    out_.flush();
  }

 private:
  const char* elementFor(Verdict verdict) const {
    if (verdict == Verdict::notChecked) return "error";
    return verdict == Verdict::incomplete && options_.allowIncomplete ? "skipped" : "failure";
  }

  std::ostream& out_;
  WriterOptions options_;
  Totals totals_;
  std::string cases_;
};

}  // namespace

std::unique_ptr<ReportWriter> makeJUnitWriter(std::ostream& out, const WriterOptions& options) {
  return std::make_unique<JUnitWriter>(out, options);
}
