// Test: tests/checker/ReportCommand_test.cpp.

#include "checker/commands/EarlierReport.h"

#include <filesystem>
#include <iterator>
#include <stdexcept>

#include "checker/options/Suggestion.h"
#include "checker/options/UserError.h"

void EarlierReport::add(EarlierReport&& other) {
  std::move(other.applications.begin(), other.applications.end(), std::back_inserter(applications));
  std::move(other.runs.begin(), other.runs.end(), std::back_inserter(runs));
  wasInterrupted = wasInterrupted || other.wasInterrupted;
}

EarlierReport earlierReport(const std::string& path) {
  EarlierReport report;
  const auto take = [&](ApplicationReport&& application) { report.applications.push_back(std::move(application)); };
  std::vector<ReportedRun> runs;
  try {
    runs = readReport(path == "-" ? "/dev/stdin" : path, take);
  } catch (const std::runtime_error& error) {
    std::error_code none;
    throw UserError("'" + path + "' " + error.what() +
                    (std::filesystem::exists(path, none) ? "" : didYouMeanFile(path)));
  }
  for (ReportedRun& run : runs) {
    if (!run.isWhole)
      throw UserError("'" + path +
                      "' is cut off: it does not end with the summary of a run, so applications can be missing");
    report.wasInterrupted = report.wasInterrupted || run.wasInterrupted;
    if (run.parts.empty()) run.parts.push_back(run.facts);
    std::move(run.parts.begin(), run.parts.end(), std::back_inserter(report.runs));
  }
  return report;
}
