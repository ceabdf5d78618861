// Test: tests/checker/Checker_test.cpp.

#include "checker/formats/Text.h"

namespace {

std::string counted(std::size_t count, const char* one, const char* several) {
  return std::to_string(count) + ' ' + (count == 1 ? one : several);
}

// "app.wgt!/www/js/main.js:57: undocumented API 'GetSerial' on MORVANE-NAVERTIX-TUNER"
std::string textOf(const Call& call) {
  const std::string place = call.place.line > 0 ? ":" + std::to_string(call.place.line) : std::string();
  return call.path + place + ": undocumented API '" + call.method + "' on " + call.plugin;
}

class TextWriter : public ReportWriter {
 public:
  TextWriter(std::ostream& out, const WriterOptions& options) : out_(out), options_(options) {}

  void add(const ApplicationReport& report) override {
    for (const Finding& finding : report.findings) {
      if (options_.engineLines) {
        out_ << finding.engineText;
      } else {
        out_ << printable(textOf(finding.call)) << '\n';
      }
    }
    for (const NotChecked& missed : report.notChecked)
      out_ << printable("not checked: " + missed.part + ": " + missed.reason) << '\n';
    const std::string verdicts[] = {
        "only documented APIs",
        "incomplete, " + counted(report.notChecked.size(), "part was", "parts were") + " not checked",
        counted(countOf(report, Finding::Status::reported), "use", "uses") + " of undocumented APIs",
        "could not check: " + report.failure,
    };
    out_ << printable(report.application + ": " + verdicts[static_cast<std::size_t>(report.verdict)]) << '\n';
  }

  void end(bool) override {}

 private:
  std::ostream& out_;
  WriterOptions options_;
};

}  // namespace

std::unique_ptr<ReportWriter> makeTextWriter(std::ostream& out, const WriterOptions& options) {
  return std::make_unique<TextWriter>(out, options);
}

std::string printable(const std::string& text) {
  static constexpr const char* kDigits = "0123456789abcdef";
  std::string shown;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7F) {
      shown += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
    } else {
      shown += c;
    }
  }
  return shown;
}
