// Workflow commands are lines of a log: "::error file=F,line=L,col=C,title=T::MESSAGE". Percent, line ends and, in
// properties, colons and commas are written as %25, %0A and so on, so that no text ends its command or begins another.
// Test: tests/checker/Formats_test.cpp.

#include "checker/formats/GitHub.h"

#include <algorithm>
#include <string_view>

#include "checker/formats/Wording.h"
#include "checker/report/Characters.h"

namespace {

std::string escaped(const std::string& text, std::string_view special) {
  static constexpr const char* kDigits = "0123456789ABCDEF";
  std::string data;
  for (const char c : printable(text)) {
    if (special.find(c) == std::string_view::npos) {
      data += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      data += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
  }
  return data;
}

std::string message(const std::string& text) {
  return escaped(text, "%");
}

class GitHubWriter : public ReportWriter {
 public:
  GitHubWriter(std::ostream& out, const WriterOptions& options) : out_(out), paths_(options.paths) {}

  void add(const ApplicationReport& report) override {
    for (const Finding& finding : report.findings) {
      const bool counts = finding.status == Finding::Status::reported;
      const bool isDeprecated = finding.kind == Finding::Kind::deprecated;
      annotate(counts ? "error" : "notice", finding.call, isDeprecated ? "Deprecated API" : "Undocumented API",
               messageOf(finding) + " (" + remarksOn(finding) + ")");
    }
    for (const Undetermined& item : report.undetermined)
      annotate("notice", item.call, "Could not determine", messageOf(item) + " (" + remarksOn(item) + ")");
    const std::size_t shown = std::min(report.notChecked.size(), kMaxNotCheckedLines);
    for (std::size_t i = 0; i < shown; ++i) {
      const NotChecked& item = report.notChecked[i];
      out_ << "::warning file=" << fileName(item.part) << ",title=Not checked::" << message(lineOn(item)) << '\n';
    }
    if (const std::string rest = restOfNotChecked(report); !rest.empty())
      out_ << "::warning title=Not checked::not checked: " << rest << '\n';
    if (const std::string excluded = lineOnExcluded(report); !excluded.empty())
      out_ << "::notice title=Excluded::" << message(excluded) << '\n';
    const std::string verdict = report.application + ": " + verdictOn(report);
    if (report.verdict == Verdict::notChecked) {
      out_ << "::error file=" << fileName(report.application) << ",title=Could not check::" << message(verdict) << '\n';
    } else {
      out_ << plainLine(verdict) << '\n';
    }
    totals_.add(report);
    out_.flush();
  }

  void end(bool wasInterrupted) override {
    if (totals_.applications > 1) out_ << summaryOf(totals_) << '\n';
    if (wasInterrupted) out_ << "::error title=Interrupted::" << kInterrupted << '\n';
    out_.flush();
  }

 private:
  std::string fileName(const std::string& path) const { return escaped(paths_.of(path), "%:,"); }

  // A line that is no command, whatever an application is called.
  static std::string plainLine(const std::string& text) {
    std::string line = printable(text);
    for (std::size_t at = line.find("::"); at != std::string::npos; at = line.find("::", at))
      line.replace(at, 2, ": :");
    for (std::size_t at = line.find("##["); at != std::string::npos; at = line.find("##[", at))
      line.replace(at, 3, "## [");
    return line;
  }

  void annotate(const char* command, const Call& call, const char* title, const std::string& text) {
    out_ << "::" << command << " file=" << fileName(call.path);
    if (call.place.line > 0) out_ << ",line=" << call.place.line << ",col=" << std::max(call.place.column, 1);
    out_ << ",title=" << title << "::" << message(text) << '\n';
  }

  std::ostream& out_;
  RepositoryPaths paths_;
  Totals totals_;
};

}  // namespace

std::unique_ptr<ReportWriter> makeGitHubWriter(std::ostream& out, const WriterOptions& options) {
  return std::make_unique<GitHubWriter>(out, options);
}
