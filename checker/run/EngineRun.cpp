// The engine's host in this program: its paths, its log function, and one run.
//
// A Run is the engine's observer. It names what the engine meets as the user knows it, and keeps the reasons for which
// parts were not checked in the order in which reports show them: what the engine met first, then sources and Flash
// files that were cut, then what is in no listing, file by file. What stands behind a stop of the engine comes last.
// Tests: tests/checker/Checker_test.cpp, NotChecked_test.cpp.

#include "checker/run/EngineRun.h"

#include <unistd.h>

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "checker/options/Suggestion.h"
#include "checker/run/FileGaps.h"
#include "checker/run/GapReasons.h"
#include "checker/run/MemoryPlace.h"
#include "checker/run/Threads.h"

namespace fs = std::filesystem;

using FlashEngine_1_00::APIAnalysis;
using FlashEngine_1_00::FoundCall;
using FlashEngine_1_00::Gap;
using FlashEngine_1_00::NotRead;

namespace {

constexpr std::size_t kMaxInputName = 100;

// What the engine's paths of our own files begin with, and no path of a user's does. As long as the device's "/tmp":
// the engine cuts long paths, and has to cut them where it does there.
constexpr const char* kRoot = "/\1\2\3";
constexpr unsigned kMiB = 20;  // as a shift

std::string formatted(const char* format, va_list arguments) {
  va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, arguments);
  std::string text(length > 0 ? static_cast<std::size_t>(length) + 1 : 1, '\0');
  (void)std::vsnprintf(text.data(), text.size(), format, again);
  va_end(again);
  text.pop_back();
  return text;
}

// Reasons by part, each once, in the order in which they came.
class Gaps {
 public:
  void add(const std::string& part, const std::string& reason) {
    if (known_.insert({part, reason}).second) list_.push_back({part, reason});
  }
  bool knows(const std::string& part) const {
    const auto next = known_.lower_bound({part, ""});
    return next != known_.end() && next->first == part;
  }
  const std::vector<NotChecked>& list() const { return list_; }

 private:
  std::vector<NotChecked> list_;
  std::set<std::pair<std::string, std::string>> known_;
};

// The list into which the engine writes its lines.
class ResultList {
 public:
  ResultList() { createResultVector(); }
  ~ResultList() { destoryResultVector(); }
  ResultList(const ResultList&) = delete;
  ResultList& operator=(const ResultList&) = delete;
};

class Run : public FlashEngine_1_00::Observer {
 public:
  explicit Run(const EngineRunOptions& options)
      : options_(options),
        place_(options.keeps, options.threads),
        threads_(options.threads),
        paths_{fs::absolute(options.database).string(), kRoot, std::string(kRoot) + "/AnalysisResult", &place_,
               &threads_},
        names_(kRoot) {
    if (options.exclusions.isInPackages()) {
      place_.hide([this](const std::string& path, const std::string& directory) { return hides(path, directory); });
    }
    accepted = options.accepted;
    all = options.all;
    if (options.unsaved == nullptr) return;
    for (const auto& [path, text] : *options.unsaved)
      place_.addText(path, text);
  }

  void addInputs(const std::string& application);
  Outcome start();

  const FlashEngine_1_00::EnginePaths& paths() const { return paths_; }
  void takeLog(const char* function, std::string text) {
    if (!isBehindStop_) log_.push_back({function, std::move(text)});
  }

  void notRead(const NotRead& part) override;
  void callFound(const FoundCall& call) override;
  void packageFound(const std::string& path, const std::string& directory) override;
  void stopPassed() override { isBehindStop_ = true; }
  void stageEnded() override { isBehindStop_ = false; }
  void beforeRemoval(const APIAnalysis& engine) override;

 private:
  void addInput(const std::string& path, const std::string& shownAs);
  void addFile(const fs::directory_entry& entry, std::vector<std::string>& files);
  bool excludes(const fs::directory_entry& entry, const std::string& application);
  bool hides(const std::string& path, const std::string& directory);
  std::vector<NotChecked> takeGaps();
  std::string failureOf(RunResult code, const Outcome& outcome) const;
  bool isUsersBoundPassed(Gap gap) const;

  // What was met before the engine stopped, and behind that.
  struct Met {
    Gaps gaps;
    std::vector<std::string> cut;  // sources and Flash files
  };
  Met& met() { return isBehindStop_ ? behindStop_ : met_; }

  const EngineRunOptions& options_;
  MemoryPlace place_;
  Threads threads_;
  FlashEngine_1_00::EnginePaths paths_;
  PathNames names_;
  std::vector<std::string> inputs_;                 // as the engine gets them
  std::string package_;                             // as the user knows the one that is being extracted
  std::map<std::string, std::string> deviceLines_;  // by the engine's own lines, in which paths are ours
  std::vector<LogLine> log_;
  Met met_;
  Met behindStop_;
  std::map<std::string, std::vector<std::string>> unlisted_;  // reasons, by the engine's path
  std::vector<std::string> files_;                            // of the application, before they are removed
  ExcludedFiles excluded_;
  bool isBehindStop_ = false;
};

// The run whose paths and log function the engine uses.
Run* currentRun = nullptr;

class CurrentRun {
 public:
  explicit CurrentRun(Run* run) { currentRun = run; }
  ~CurrentRun() { currentRun = nullptr; }
  CurrentRun(const CurrentRun&) = delete;
  CurrentRun& operator=(const CurrentRun&) = delete;
};

// ---- the application's files ---------------------------------------------------------------------------------------

void Run::addInputs(const std::string& application) {
  std::error_code error;
  const fs::file_status status = fs::status(application, error);
  const auto isUnsaved = [&](const std::string& path) {
    return options_.unsaved != nullptr && options_.unsaved->count(path) > 0;
  };
  if (isUnsaved(application)) return addInput(application, application);
  if (!fs::exists(status)) throw std::runtime_error("no such file or directory" + didYouMeanFile(application));
  if (fs::is_regular_file(status)) {
    if (access(application.c_str(), R_OK) != 0) throw std::runtime_error(std::strerror(errno));
    return addInput(application, application);
  }
  if (!fs::is_directory(status)) throw std::runtime_error("neither a file nor a directory");
  std::vector<std::string> files;
  fs::recursive_directory_iterator entry(application, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    if (excludes(*entry, application)) {
      entry.disable_recursion_pending();
    } else {
      addFile(*entry, files);
    }
  }
  if (error) throw std::runtime_error("cannot be read whole: " + error.message());
  if (options_.unsaved != nullptr) {
    for (const auto& [path, text] : *options_.unsaved)
      files.push_back(path);
  }
  std::sort(files.begin(), files.end());
  files.erase(std::unique(files.begin(), files.end()), files.end());
  for (const std::string& file : files)
    addInput(file, file);
}

void Run::addFile(const fs::directory_entry& entry, std::vector<std::string>& files) {
  std::error_code error;
  const std::string path = entry.path().string();
  const fs::file_status status = entry.status(error);
  if (fs::is_regular_file(status)) {
    files.push_back(path);
  } else if (entry.is_symlink(error) && fs::is_directory(status)) {
    met_.gaps.add(path, "a link to a directory");
  } else if (entry.is_symlink(error) && !fs::exists(status)) {
    met_.gaps.add(path, "a link to what is not there");
  } else if (!fs::is_directory(status) && isNamedAsSource(path)) {
    met_.gaps.add(path, "neither a file nor a directory");
  }
}

// Whether a file or folder of the user's is excluded, which is then counted.
bool Run::excludes(const fs::directory_entry& entry, const std::string& application) {
  const std::string path = entry.path().string();
  if (options_.exclusions.excludedPart(std::string_view(path).substr(application.size())).empty()) return false;
  std::error_code error;
  excluded_.add(path, fs::is_directory(entry.symlink_status(error)) ? filesBelow(path) : 1);
  return true;
}

// The same for a file of the package that expands into `directory`.
bool Run::hides(const std::string& path, const std::string& directory) {
  const std::string_view inside = std::string_view(path).substr(directory.size());
  const std::string_view part = options_.exclusions.excludedPart(inside);
  if (part.empty()) return false;
  const std::string shown = names_.shown(path);
  excluded_.add(shown.substr(0, shown.size() - (inside.size() - part.size())));
  return true;
}

void Run::addInput(const std::string& path, const std::string& shownAs) {
  const fs::path absolute = fs::absolute(path);
  std::string enginePath = absolute.string();
  // The engine passes over packages below a directory called ".fla..." and cuts long package names; where the user
  // keeps an application must not decide on its verdict.
  const bool misread = absolute.parent_path().string().find(".fla") != std::string::npos ||
                       enginePath.size() > FlashEngine_1_00::kMaxPackageName;
  if (misread) {
    const bool isLong = absolute.filename().string().size() > kMaxInputName;
    const std::string name =
        isLong ? "application" + absolute.extension().string().substr(0, kMaxInputName) : absolute.filename().string();
    enginePath = std::string(kRoot) + "/input/" + std::to_string(inputs_.size()) + "/" + name;
    place_.addInput(enginePath, absolute.string());
  }
  inputs_.push_back(enginePath);
  names_.add(enginePath, shownAs);
}

// ---- what the engine tells -----------------------------------------------------------------------------------------

void Run::packageFound(const std::string& path, const std::string& directory) {
  const std::string shown = names_.shown(path);
  package_ = shown + "!";
  names_.add(directory, package_);
  // Another package can have the name that is left of it.
  if (path.size() > FlashEngine_1_00::kMaxPackageName) met_.gaps.add(shown, "its path is too long for the engine");
}

void Run::callFound(const FoundCall& call) {
  if (call.verdict == FoundCall::Verdict::undocumented && call.isOnDevice) {
    const std::string path(call.path);
    deviceLines_.try_emplace(FlashEngine_1_00::findingLine(path, call.line, call.method),
                             names_.findingLine(path, call.line, call.method));
  }
  if (options_.callFound != nullptr) options_.callFound(call);
}

bool Run::isUsersBoundPassed(Gap gap) const {
  const std::uint64_t bytes = std::uint64_t{options_.unpacked} << kMiB;
  return gap == Gap::entryPastBytes && bytes > 0 && bytes < options_.expansion.bytes;
}

void Run::notRead(const NotRead& part) {
  if (isUsersBoundPassed(part.gap)) {
    throw std::runtime_error("its packages unpack to more than the " + std::to_string(options_.unpacked) +
                             " MiB of --unpacked");
  }
  const GapReason reason = reasonOf(part.gap, part.code);
  switch (reason.kind) {
    case GapReason::Kind::none:
      break;
    case GapReason::Kind::entry:
      met().gaps.add(package_ + (part.entry.empty() ? "" : "/" + std::string(part.entry)), reason.text);
      break;
    case GapReason::Kind::file:
      if (!met_.gaps.knows(names_.shown(part.path))) met().gaps.add(names_.shown(part.path), reason.text);
      break;
    case GapReason::Kind::cut:
      met().cut.push_back(part.path);
      break;
    case GapReason::Kind::unlisted:
      unlisted_[part.path].emplace_back(reason.text);
      break;
  }
}

void Run::beforeRemoval(const APIAnalysis& engine) {
  if (options_.beforeRemoval != nullptr) options_.beforeRemoval(engine);
  files_ = inputs_;
  files_.insert(files_.end(), engine.extractedFileList.begin(), engine.extractedFileList.end());
  for (const std::string& path : files_) {
    for (const std::string& reason : fileGaps(path))
      unlisted_[path].push_back(reason);
  }
}

// ---- the run -------------------------------------------------------------------------------------------------------

// A file for which there is a reason already gets no other.
std::vector<NotChecked> Run::takeGaps() {
  const auto addCut = [&](const Met& met) {
    for (const std::string& path : met.cut) {
      const std::string part = names_.shown(path);
      if (!met_.gaps.knows(part)) met_.gaps.add(part, cutReason(FlashEngine_1_00::isFlashFile(path)));
    }
  };
  addCut(met_);
  for (const std::string& path : files_) {
    const auto found = unlisted_.find(path);
    if (found == unlisted_.end() || met_.gaps.knows(names_.shown(path))) continue;
    for (const std::string& reason : found->second)
      met_.gaps.add(names_.shown(path), reason);
  }
  for (const NotChecked& gap : behindStop_.gaps.list())
    met_.gaps.add(gap.part, gap.reason);
  addCut(behindStop_);
  return met_.gaps.list();
}

std::string Run::failureOf(RunResult code, const Outcome& outcome) const {
  const std::string database = "the database '" + options_.database + "'";
  if (code == RUN_DB_LOAD_FAILED) return database + " cannot be read; pass --database FILE";
  if (code == RUN_DB_NO_ROOT) {
    return database + (FlashEngine_1_00::isDatabaseTooDeep(options_.database) ? " nests its elements too deep"
                                                                              : " has no APIAnalysisDB element");
  }
  return outcome.webSources + outcome.flashFiles == 0 ? "there is neither a web source nor a Flash file in it"
                                                      : std::string();
}

Outcome Run::start() {
  const CurrentRun current(this);
  const ResultList list;
  auto engine = std::make_unique<APIAnalysis>();
  engine->observer = this;
  engine->expansionBounds = options_.expansion;
  if (options_.unpacked > 0) {
    std::uint64_t& bytes = engine->expansionBounds.bytes;
    bytes = std::min(bytes, std::uint64_t{options_.unpacked} << kMiB);
  }
  const RunResult code = engine->StartAnalysis(&inputs_);
  engine->observer = nullptr;

  std::vector<std::string> lines;  // two of ours can be one on the device, where paths are shorter
  for (const std::string* line : engine->resultList) {
    const std::string& onDevice = deviceLines_.at(*line);
    if (std::find(lines.begin(), lines.end(), onDevice) == lines.end()) lines.push_back(onDevice);
  }
  const auto countFlash = [](const std::vector<std::string>& files) {
    return static_cast<std::uint64_t>(std::count_if(files.begin(), files.end(), FlashEngine_1_00::isFlashFile));
  };
  const std::uint64_t sources = engine->worthfulSourceList.size();
  const std::uint64_t flashFiles = countFlash(inputs_) + countFlash(engine->extractedFileList);
  Outcome outcome{code,       {},      std::move(lines), std::move(log_),   excluded_.list(),
                  takeGaps(), sources, flashFiles,       std::move(engine), names_};
  outcome.failure = failureOf(code, outcome);
  outcome.files = std::move(files_);
  return outcome;
}

}  // namespace

const FlashEngine_1_00::EnginePaths& FlashEngine_1_00::enginePaths() {
  static const EnginePaths none{};
  return currentRun == nullptr ? none : currentRun->paths();
}

void Print_Log(const char* function, unsigned, char* format, ...) {
  if (currentRun == nullptr) return;
  va_list arguments;
  va_start(arguments, format);
  currentRun->takeLog(function, formatted(format, arguments));
  va_end(arguments);
}

Outcome runEngine(const std::string& application, const EngineRunOptions& options) {
  Run run(options);
  run.addInputs(application);
  return run.start();
}
