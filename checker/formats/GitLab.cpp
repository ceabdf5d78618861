// Fingerprints tell issues apart over the whole report: that of a finding is the same in two applications, so the
// application's name stands before it, and of several alike each has a number.
// Test: tests/checker/Formats_test.cpp.

#include "checker/formats/GitLab.h"

#include <algorithm>
#include <map>
#include <string>

#include "checker/formats/JsonFormats.h"
#include "checker/formats/Wording.h"
#include "checker/report/Characters.h"

using Json = nlohmann::ordered_json;

namespace {

struct Severities {
  const char* check;
  const char* severity;
};
constexpr Severities kUndocumented{"undocumented-api", "major"};
constexpr Severities kDeprecated{"deprecated-api", "major"};
constexpr Severities kAccepted{"accepted-api", "info"};
constexpr Severities kNotChecked{"not-checked", "minor"};
constexpr Severities kExcluded{"excluded", "info"};
constexpr Severities kFailed{"could-not-check", "critical"};

class GitLabWriter : public ReportWriter {
 public:
  GitLabWriter(std::ostream& out, const WriterOptions& options) : out_(out), paths_(options.paths) { out_ << '['; }

  void add(const ApplicationReport& report) override {
    for (const Finding& finding : report.findings) {
      const bool counts = finding.status == Finding::Status::reported;
      if (!counts && finding.status != Finding::Status::accepted) continue;
      const bool isDeprecated = finding.kind == Finding::Kind::deprecated;
      write(!counts        ? kAccepted
            : isDeprecated ? kDeprecated
                           : kUndocumented,
            messageOf(finding) + " (" + remarksOn(finding) + ")", finding.call.path, finding.call.place.line,
            report.application + ':' + finding.fingerprint);
    }
    for (const NotChecked& item : report.notChecked)
      write(kNotChecked, lineOn(item), item.part, 0, lineOn(item));
    for (const Excluded& item : report.excluded)
      write(kExcluded, "excluded: " + counted(item.files, "file", "files"), item.path, 0, "excluded: " + item.path);
    if (report.verdict == Verdict::notChecked)
      write(kFailed, verdictOn(report), report.application, 0, report.application + ": " + verdictOn(report));
  }

  void end(bool wasInterrupted) override {
    if (wasInterrupted) write(kFailed, kInterrupted, ".", 0, kInterrupted);
    out_ << (isFirst_ ? "]\n" : "\n]\n");
    out_.flush();
  }

 private:
  void write(const Severities& kind, const std::string& text, const std::string& path, int line,
             const std::string& identity) {
    const int before = alike_[identity]++;
    const Json issue{{"description", printable(text)},
                     {"check_name", kind.check},
                     {"fingerprint", printable(before == 0 ? identity : identity + '#' + std::to_string(before + 1))},
                     {"severity", kind.severity},
                     {"location", {{"path", printable(paths_.of(path))}, {"lines", {{"begin", std::max(line, 1)}}}}}};
    out_ << (isFirst_ ? "\n  " : ",\n  ") << jsonText(issue);
    isFirst_ = false;
  }

  std::ostream& out_;
  RepositoryPaths paths_;
  std::map<std::string, int> alike_;
  bool isFirst_ = true;
};

}  // namespace

std::unique_ptr<ReportWriter> makeGitLabWriter(std::ostream& out, const WriterOptions& options) {
  return std::make_unique<GitLabWriter>(out, options);
}
