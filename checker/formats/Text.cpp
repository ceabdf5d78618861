// Test: tests/checker/Formats_test.cpp.

#include "checker/formats/Text.h"

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
    for (const Finding& finding : report.findings) {
      if (!options_.engineLines) {
        const bool counts = finding.status == Finding::Status::reported;
        writeCall(finding.call, counts ? "" : "note: ", messageOf(finding.call), counts ? kRed : kFaint,
                  remarksOn(finding));
      } else if (finding.isOnDevice) {
        out_ << finding.engineText;
      }
    }
    for (const Undetermined& item : report.undetermined)
      writeCall(item.call, "", messageOf(item), kYellow, remarksOn(item));
    for (const NotChecked& missed : report.notChecked)
      out_ << painted("not checked: ", kYellow) << printable(missed.part + ": " + missed.reason) << '\n';
    out_ << painted(report.application + ": ", kBold)
         << painted(verdictOn(report), kColorOf[static_cast<std::size_t>(report.verdict)]) << '\n';
    totals_.add(report);
    out_.flush();  // so that it is seen while the next one is checked
  }

  void end(bool wasInterrupted) override {
    if (totals_.applications > 1) out_ << painted(summaryOf(totals_), kBold) << '\n';
    if (wasInterrupted) out_ << painted(kInterrupted, kYellow) << '\n';
    out_.flush();
  }

 private:
  std::string painted(const std::string& text, const char* color) const {
    return options_.color ? color + printable(text) + kPlain : printable(text);
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
