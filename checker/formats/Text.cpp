// Lines for people and for programs that read compilers' messages. Whatever an application brought passes through
// `printable` on its way out, so no line can pass for another.
// Test: tests/checker/Formats_test.cpp.

#include "checker/formats/Text.h"

#include <algorithm>
#include <string_view>

#include "checker/formats/Wording.h"

namespace {

// How a terminal is told to write.
constexpr const char* kBold = "\x1b[1m";
constexpr const char* kFaint = "\x1b[2m";
constexpr const char* kRed = "\x1b[31m";
constexpr const char* kGreen = "\x1b[32m";
constexpr const char* kYellow = "\x1b[33m";
constexpr const char* kBoldRed = "\x1b[1;31m";
constexpr const char* kPlain = "\x1b[0m";
constexpr const char* kColorOf[] = {kGreen, kYellow, kRed, kBoldRed};  // of each Verdict

class TextWriter : public ReportWriter {
 public:
  TextWriter(std::ostream& out, const WriterOptions& options) : out_(out), options_(options) {}

  void add(const ApplicationReport& report) override {
    for (const Finding& finding : report.findings)
      writeFinding(finding);
    for (const Undetermined& item : report.undetermined) {
      writeCall(item.call, "", messageOf(item), kYellow, remarksOn(item));
      if (options_.trace) writeTrace(item.trace);
    }
    writeNotChecked(report);
    if (const std::string excluded = lineOnExcluded(report); !excluded.empty())
      out_ << painted(excluded, kYellow) << '\n';
    if (const std::string share = trialShareOf(report); !options_.engineLines && !share.empty())
      out_ << painted("trial: ", kFaint) << printable(report.application + ": " + share) << '\n';
    out_ << painted(report.application + ": ", kBold)
         << painted(verdictOn(report), kColorOf[static_cast<std::size_t>(report.verdict)]) << '\n';
    totals_.add(report);
    out_.flush();  // so that it is seen while the next one is checked
  }

  void end(bool wasInterrupted) override {
    if (totals_.applications > 1) out_ << painted(summaryOf(totals_), kBold) << '\n';
    if (!options_.run.configFile.empty())
      out_ << painted("options were taken from " + options_.run.configFile, kFaint) << '\n';
    if (wasInterrupted) out_ << painted(kInterrupted, kYellow) << '\n';
    if (const std::string rules = totals_.rules.text(); !options_.engineLines && !rules.empty())
      out_ << painted("rules: " + rules, kFaint) << '\n';
    out_.flush();
  }

 private:
  std::string painted(const std::string& text, const char* color) const {
    return options_.color ? color + printable(text) + kPlain : printable(text);
  }

  void writeFinding(const Finding& finding) {
    if (options_.engineLines) {
      const std::string_view line = finding.engineText;
      if (finding.isOnDevice) out_ << printable(line.substr(0, line.find_last_not_of('\n') + 1)) << '\n';
      return;
    }
    const bool counts = finding.status == Finding::Status::reported;
    writeCall(finding.call, counts ? "" : "note: ", messageOf(finding), counts ? kRed : kFaint, remarksOn(finding));
    if (options_.trace) writeTrace(finding.trace);
  }

  void writeTrace(const std::vector<TraceStep>& trace) {
    for (const TraceStep& step : trace) {
      out_ << "    " << painted(placeOf(step.path, step.place) + ": ", kFaint) << printable(step.text) << '\n';
      if (!step.source.empty()) out_ << "        " << painted(step.source, kFaint) << '\n';
    }
  }

  void writeNotChecked(const ApplicationReport& report) {
    const std::size_t shown = std::min(report.notChecked.size(), kMaxNotCheckedLines);
    for (std::size_t i = 0; i < shown; ++i) {
      const NotChecked& item = report.notChecked[i];
      out_ << painted("not checked: ", kYellow) << printable(item.part + ": " + item.reason) << '\n';
    }
    if (const std::string rest = restOfNotChecked(report); !rest.empty())
      out_ << painted("not checked: ", kYellow) << rest << '\n';
  }

  void writeCall(const Call& call, const char* kind, const std::string& message, const char* color,
                 const std::string& remarks) {
    out_ << painted(placeOf(call) + ": ", kBold) << kind << painted(message, color) << ' '
         << painted('(' + remarks + ')', kFaint) << '\n';
  }

  std::ostream& out_;
  WriterOptions options_;
  Totals totals_;
};

}  // namespace

std::unique_ptr<ReportWriter> makeTextWriter(std::ostream& out, const WriterOptions& options) {
  return std::make_unique<TextWriter>(out, options);
}
