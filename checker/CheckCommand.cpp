// tarvo-check's check of many applications: where they come from, where their reports go, and the exit status.
// Test: tests/checker/Catalogue_test.cpp.

#include "checker/CheckCommand.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
#include <set>

#include "checker/Accept.h"
#include "checker/Baseline.h"
#include "checker/Inspection.h"
#include "checker/OutputFile.h"
#include "checker/Progress.h"
#include "checker/ReportWriter.h"
#include "checker/Suggestion.h"
#include "checker/UserError.h"
#include "checker/WorkerPool.h"
#include "checker/formats/Text.h"
#include "checker/formats/Wording.h"

namespace {

constexpr int kStatusOf[] = {0, 3, 1, 2};  // of each Verdict
constexpr int kSignalled = 128;

// ---- which applications --------------------------------------------------------------------------------------------

// The paths in `text`: a NUL behind each, or one a line.
std::vector<std::string> pathsIn(const std::string& text) {
  const bool hasNuls = text.find('\0') != std::string::npos;
  std::vector<std::string> paths;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find(hasNuls ? '\0' : '\n', start), text.size());
    std::string path = text.substr(start, end - start);
    if (!hasNuls && !path.empty() && path.back() == '\r') path.pop_back();
    if (!path.empty()) paths.push_back(path);
    start = end + 1;
  }
  return paths;
}

std::vector<std::string> readList(const std::string& list) {
  std::ifstream file;
  std::error_code error;
  if (list != "-" && !std::filesystem::is_directory(list, error)) file.open(list, std::ios::binary);
  if (list != "-" && !file.is_open()) throw UserError("cannot read the list '" + list + "'" + didYouMeanFile(list));
  std::istream& stream = list == "-" ? std::cin : file;
  return pathsIn({std::istreambuf_iterator<char>(stream), {}});
}

std::vector<std::string> applicationsOf(const Options& options) {
  std::vector<std::string> applications;
  const auto addList = [&](const std::string& list) {
    for (std::string& path : readList(list))
      applications.push_back(std::move(path));
  };
  for (const std::string& application : options.applications) {
    if (application == "-") {
      addList("-");
    } else {
      applications.push_back(application);
    }
  }
  for (const std::string& list : options.lists)
    addList(list);
  if (applications.empty()) throw UserError("the list names no application");
  return applications;
}

// ---- where reports go ----------------------------------------------------------------------------------------------

Format formatFor(const std::string& name) {
  const std::optional<Format> format = formatNamed(name);
  if (format) return *format;
  static const std::vector<std::string> kNames{"text", "json", "jsonl", "sarif", "junit", "html"};
  throw UserError("no format is called '" + name + "'; there are text, json, jsonl, sarif, junit and html" +
                  didYouMean(name, kNames));
}

// Everything that is written about the reports.
class Outputs {
 public:
  explicit Outputs(const Options& options) {
    WriterOptions writerOptions{
        options.database, false, options.engineLines, options.all, !options.baseline.empty(), options.allowIncomplete};
    bool isFormatTaken = false;
    std::set<std::filesystem::path> taken;
    for (const std::string& path : options.outputs) {
      if (!taken.insert(std::filesystem::absolute(path).lexically_normal()).second)
        throw UserError("--output '" + path + "' is given twice; a file holds one report");
      std::optional<Format> format = formatOfFile(path);
      if (!format) {
        if (options.format.empty())
          throw UserError("no format is known by the name of '" + path +
                          "'; call it .txt, .json, .jsonl, .sarif, .xml or .html, or pass --format");
        format = formatFor(options.format);
        isFormatTaken = true;
      }
      files_.push_back(std::make_unique<OutputFile>(path));
      writers_.push_back(makeWriter(*format, files_.back()->stream(), writerOptions));
    }
    const bool hasFormat = !options.format.empty() && !isFormatTaken;
    if (!options.quiet && (hasFormat || options.outputs.empty())) {
      writerOptions.color = wantsColor(options);
      const Format format = hasFormat ? formatFor(options.format) : Format::text;
      writers_.push_back(makeWriter(format, std::cout, writerOptions));
      isPrinting_ = true;
    }
  }

  // Whether reports go to standard output.
  bool isPrinting() const { return isPrinting_; }

  void add(const ApplicationReport& report) {
    for (const auto& writer : writers_)
      writer->add(report);
  }

  void end(bool wasInterrupted) {
    for (const auto& writer : writers_)
      writer->end(wasInterrupted);
    for (const auto& file : files_)
      file->finish();
  }

 private:
  std::vector<std::unique_ptr<OutputFile>> files_;
  std::vector<std::unique_ptr<ReportWriter>> writers_;
  bool isPrinting_ = false;
};

void printLog(const std::vector<LogLine>& log) {
  for (const LogLine& line : log)
    std::cerr << line.function << ": " << printable(line.text) << '\n';
}

// ---- the run -------------------------------------------------------------------------------------------------------

// Each report passes through `take`, on its way from its worker to the outputs.
class Run : public RunListener {
 public:
  Run(const Options& options, const std::set<std::string>& accepted, bool isOnlyApplication)
      : isOnlyApplication_(isOnlyApplication),
        unused_(accepted),
        allowsIncomplete_(options.allowIncomplete),
        isQuiet_(options.quiet),
        baseline_(options.baseline.empty() ? std::nullopt : std::optional<Baseline>(options.baseline)),
        outputs_(options),
        progress_(!options.quiet && !options.noProgress && isCapableTerminal(STDERR_FILENO)) {}

  bool take(ApplicationReport report) override {
    if (baseline_) baseline_->apply(report, isOnlyApplication_);
    unused_.see(report);
    if (isPrintedBesideProgress_ || !report.log.empty()) progress_.clear();
    printLog(report.log);
    outputs_.add(report);
    totals_.add(report);
    return hasPrinted();
  }

  void tell(const RunState& state) override { progress_.show(state); }

  // Throws UserError if not all could be written; nobody is told if it is only that nobody reads it any more.
  void end(bool wasInterrupted) {
    progress_.clear();
    outputs_.end(wasInterrupted);
    if (!outputs_.isPrinting() && !isQuiet_) std::cout << printable(summaryOf(totals_)) << '\n';
    if (!isQuiet_ && !wasInterrupted) tellOfUnusedNames();
    if (!hasPrinted() && printError_ != EPIPE)
      throw UserError(std::string("cannot write to standard output: ") + std::strerror(printError_));
  }

  int status() const {
    for (const Verdict verdict : {Verdict::notChecked, Verdict::findings, Verdict::incomplete}) {
      const bool isAllowed = verdict == Verdict::incomplete && allowsIncomplete_;
      if (totals_.of(verdict) > 0 && !isAllowed) return kStatusOf[static_cast<std::size_t>(verdict)];
    }
    return 0;
  }

 private:
  bool hasPrinted() {
    if (printError_ != 0 || std::cout.flush()) return printError_ == 0;
    printError_ = errno;
    return false;
  }

  void tellOfUnusedNames() const {
    for (const std::string& name : unused_.names())
      std::cerr << "tarvo-check: no finding is of '" << printable(name) << "', which is accepted\n";
  }

  bool isOnlyApplication_;
  UnusedNames unused_;
  bool allowsIncomplete_;
  bool isQuiet_;
  std::optional<Baseline> baseline_;
  Outputs outputs_;
  Progress progress_;
  bool isPrintedBesideProgress_ = isatty(STDOUT_FILENO) == 1;
  int printError_ = 0;
  Totals totals_;
};

}  // namespace

int check(const Options& options) {
  requireDatabase(options);
  const std::vector<std::string> applications = applicationsOf(options);
  const std::set<std::string> accepted = acceptedNames(options.accept, options.acceptFiles);
  Run run(options, accepted, applications.size() == 1);
  const bool all = options.all || !options.baseline.empty();  // what stands behind a known finding may be new
  const Work work = [&](const std::string& application) {
    return inspect(application, {options.database, all, options.log, accepted});
  };
  const Signals signals;  // as long as there are files that are half written
  const int signal = checkEach(applications, options.jobs, options.bounds, work, signals, run);
  run.end(signal != 0);
  return signal != 0 ? kSignalled + signal : run.status();
}
