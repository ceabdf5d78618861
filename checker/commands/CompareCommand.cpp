// Each version is checked, all calls of it, or read from a report; the comparison itself is made of reports alone
// (report/Comparison). Test: tests/checker/CompareCommand_test.cpp.

#include "checker/commands/CompareCommand.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>

#include "checker/commands/CheckCommand.h"
#include "checker/commands/EarlierReport.h"
#include "checker/commands/StandardStreams.h"
#include "checker/formats/ComparisonFormats.h"
#include "checker/formats/Evidence.h"
#include "checker/formats/OutputFile.h"
#include "checker/options/ExitStatus.h"
#include "checker/options/Suggestion.h"
#include "checker/options/UserError.h"
#include "checker/report/Characters.h"

namespace fs = std::filesystem;

namespace {

// The comparison's files and formats, made before anything is checked.
class ComparisonOutputs {
 public:
  explicit ComparisonOutputs(const Options& options)
      : format_(options.format), isQuiet_(options.quiet), isColored_(wantsColor(options)) {
    for (const std::string& path : options.outputs) {
      const auto format = comparisonFormatOfFile(path);
      if (!format) throw UserError("no format is known by the name of '" + path + "'; call it .txt, .json or .html");
      files_.push_back({std::make_unique<OutputFile>(path), *format});
    }
  }

  void write(const Comparison& comparison) {
    for (const File& file : files_)
      ::write(comparison, file.format, false, file.file->stream());
    for (const File& file : files_)
      file.file->finish();
    if (isQuiet_) return;
    if (files_.empty() || !format_.empty()) {
      ::write(comparison, comparisonFormatNamed(format_).value_or(ComparisonFormat::text), isColored_, std::cout);
    } else {
      std::cout << printable(summaryOf(comparison)) << '\n';
    }
  }

 private:
  struct File {
    std::unique_ptr<OutputFile> file;
    ComparisonFormat format;
  };

  std::string format_;
  bool isQuiet_;
  bool isColored_;
  std::vector<File> files_;
};

bool isCalledReport(const std::string& path) {
  const std::string suffix = fs::path(path).extension().string();
  return suffix == ".json" || suffix == ".jsonl";
}

void requireThere(const std::string& path) {
  std::error_code error;
  if (!fs::exists(path, error)) throw UserError("there is no '" + path + "'" + didYouMeanFile(path));
}

Version reported(const std::string& path) {
  EarlierReport report = earlierReport(path);
  if (report.wasInterrupted)
    throw UserError("'" + path + "' is of a run that was interrupted: applications are missing in it");
  return {together(report.runs), std::move(report.applications)};
}

// What there is at `path` after a check; nothing if a signal ended it, which is left in `status`.
Version checked(const std::string& path, const Options& given, int& status) {
  Options options = given;
  PathList only;
  only.add(path);
  options.named = std::make_shared<const PathList>(std::move(only));
  Version version;
  version.facts = thisProgram();
  version.facts.database = options.database;
  version.facts.all = true;
  addEvidence(version.facts);
  status = checkAll(options, [&](ApplicationReport&& report) { version.applications.push_back(std::move(report)); });
  return version;
}

// What a config file may say about checks is not meant for comparisons.
Options forComparison(const Options& given) {
  Options options = given;
  options.store.clear();
  options.baseline.clear();
  options.all = true;
  if (options.given.count("format") == 0) options.format.clear();
  if (options.given.count("output") == 0) options.outputs.clear();
  return options;
}

int statusOf(const Comparison& comparison, bool allowsIncomplete) {
  bool hasNew = false;
  bool hasGaps = false;
  for (const ApplicationComparison& application : comparison.applications) {
    const bool hasFailed =
        application.olderVerdict == Verdict::notChecked || application.newerVerdict == Verdict::notChecked;
    if (hasFailed) return kFailed;
    hasNew = hasNew || application.countOf(FindingChange::What::added) > 0;
    hasGaps = hasGaps || !application.notChecked.empty();
  }
  return hasNew ? kDiffers : hasGaps && !allowsIncomplete ? kIncomplete : kDone;
}

}  // namespace

int compareCommand(const Options& given) {
  const Options options = forComparison(given);
  for (const std::string& path : {options.older, options.newer})
    requireThere(path);
  ComparisonOutputs outputs(options);
  Version versions[2];
  const std::string* path = &options.older;
  for (Version& version : versions) {
    int status = kDone;
    version = isCalledReport(*path) ? reported(*path) : checked(*path, options, status);
    if (status != kDone) return status;
    path = &options.newer;
  }
  const Comparison comparison = compare(versions[0], versions[1]);
  outputs.write(comparison);
  return printedWith(statusOf(comparison, options.allowIncomplete));
}
