// The engine's host in this program: its paths, its log function, and one run. Test: tests/checker/Checker_test.cpp.

#include "checker/EngineRun.h"

#include <fcntl.h>
#include <minizip/unzip.h>
#include <unistd.h>

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "APICheckEngine/Verdicts.h"
#include "checker/FileGaps.h"
#include "checker/Suggestion.h"
#include "platform/Limits.h"
#include "platform/Paths.h"
#include "tarvo/Print_Log.h"
#include "tarvo/api_check_engine.h"
#include "unzip/unzip_job.h"

namespace fs = std::filesystem;

namespace {

FlashEngine_1_00::EnginePaths currentPaths;
EngineRun* currentRun = nullptr;

constexpr std::string_view kPackageFound = " zip file found [%s]/ Size [%d]";
constexpr std::string_view kEntryFailed = " entry [%s] not extracted [%d] ";
constexpr std::string_view kFlashFailed = " file[%s] not read whole [%d] ";

// The extracted files are there until one of these.
constexpr std::string_view kCheckpoint = "Time [%s]:%ld:%ld ";  // "Finished"
constexpr std::string_view kRunEnded = "[%s] StartRun-returnCode [%d] ";

constexpr int kAnyCode = 0;

// Log lines that tell of something the engine did not look at. They begin with the name of a file, or of an entry of
// the package that is being expanded; some go on with a code.
struct LogReason {
  std::string_view format;
  bool isEntry;
  int code;
  const char* reason;
};
constexpr LogReason kLogReasons[] = {
    {kEntryFailed, true, FlashEngine_1_00::kBoundPassed,
     "a bound on what all packages unpack to was passed: neither it nor what follows was unpacked"},
    {kEntryFailed, true, UNZ_END_OF_LIST_OF_FILE,
     "it stands behind the entries that the package counts: neither it nor what follows was unpacked"},
    {kEntryFailed, true, UNZ_ERRNO, "could not be read or written: neither it nor what follows was unpacked"},
    {kEntryFailed, true, FlashEngine_1_00::kEncrypted, "encrypted: neither it nor what follows was unpacked"},
    {kEntryFailed, true, kAnyCode, "damaged: neither it nor what follows was unpacked"},
    {" unsafe entry [%s] skipped ", true, kAnyCode, "its name leads out of the package"},
    {" entry [%s] has a longer name ", true, kAnyCode, "its name is too long or holds a zero byte"},
    {" entry [%s] replaces an earlier one ", true, kAnyCode, "an earlier entry of the same name was replaced"},
    {" entry [%s] is named [%s] in its own header ", true, kAnyCode,
     "other readers take it for another file: its own header has another name"},
    {" entry [%s] holds more than the [%llu] bytes of its header ", true, kAnyCode,
     "it holds more than its header says"},
    {" package [%s] not extracted ", false, kAnyCode, "could not be opened as a package"},
    {" file[%s] Open Error ", false, kAnyCode, "could not be opened"},
    {" [%s] Open Error ", false, kAnyCode, "could not be opened"},
    {kFlashFailed, false, RUN_SWF_BAD_SIGNATURE, nullptr},  // told by flashGaps
    {kFlashFailed, false, RUN_SWF_UNCOMPRESS_FAILED, "its compressed body is damaged or too large"},
    {kFlashFailed, false, RUN_TIME_LIMIT, "the time for Flash files was used up"},
    {kFlashFailed, false, kAnyCode, "could not be read whole"},
};

constexpr const char* kFlashCut = "cut by a bound or by the time for Flash files";
constexpr const char* kSourceCut = "cut at its first zero byte, or too large to be read";

constexpr std::size_t kMaxLinkName = 100;

bool isFlash(const std::string& path) {
  const std::string extension = CStringUtil().findFileExtention(path);
  return extension == "swf" || extension == "SWF";
}

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

// Makes a run the one that gets the engine's log lines, for as long as this object lives.
class CurrentRun {
 public:
  explicit CurrentRun(EngineRun* run) { currentRun = run; }
  ~CurrentRun() { currentRun = nullptr; }
  CurrentRun(const CurrentRun&) = delete;
  CurrentRun& operator=(const CurrentRun&) = delete;
};

// Restores the working directory, which a run that expands a package changes.
class WorkingDirectory {
 public:
  WorkingDirectory() : directory_(open(".", O_PATH | O_DIRECTORY | O_CLOEXEC)) {}
  ~WorkingDirectory() {
    if (directory_ < 0) return;
    (void)!fchdir(directory_);
    close(directory_);
  }
  WorkingDirectory(const WorkingDirectory&) = delete;
  WorkingDirectory& operator=(const WorkingDirectory&) = delete;

 private:
  int directory_;
};

}  // namespace

const FlashEngine_1_00::EnginePaths& FlashEngine_1_00::enginePaths() {
  return currentPaths;
}

void Print_Log(const char* function, unsigned, char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  if (currentRun != nullptr) currentRun->takeLog(function, format, arguments);
  va_end(arguments);
}

EngineRun::EngineRun(const std::string& database, const std::string& application, EngineRunOptions options)
    : database_(database), options_(std::move(options)), watch_(options_.watch) {
  watch_.found = [this](const FlashEngine_1_00::FoundCall& call) { hear(call); };
  addInputs(application);
  currentPaths = {fs::absolute(database).string(), directory_.path(), directory_.path() + "/AnalysisResult"};
  run();
}

void EngineRun::run() {
  const WorkingDirectory restored;
  const CurrentRun current(this);
  createResultVector();
  engine_.emplace();
  engine_->watch = &watch_;
  code_ = engine_->StartAnalysis(&inputs_);
  destoryResultVector();
}

void EngineRun::hear(const FlashEngine_1_00::FoundCall& call) {
  namespace detail = FlashEngine_1_00::detail;
  if (call.verdict == FlashEngine_1_00::FoundCall::Verdict::undocumented) {
    deviceLines_.try_emplace(detail::findingLine(call.path, call.line, call.method),
                             findingLine(call.path, call.line, call.method));
  }
  if (options_.watch.found != nullptr) options_.watch.found(call);
}

std::string EngineRun::findingLine(const std::string& path, int line, const std::string& method) const {
  return FlashEngine_1_00::detail::findingLine(asOnDevice(path), line, method);
}

std::vector<std::string> EngineRun::findingLines() const {
  std::vector<std::string> lines;
  for (const std::string* line : engine_->resultList)
    lines.push_back(deviceLines_.at(*line));
  return lines;
}

std::string EngineRun::failure() const {
  if (code_ == RUN_DB_LOAD_FAILED) return "the database '" + database_ + "' cannot be read; pass --database FILE";
  if (code_ == RUN_DB_NO_ROOT) return "the database '" + database_ + "' has no APIAnalysisDB element";
  return webSources() + flashFiles() == 0 ? "there is neither a web source nor a Flash file in it" : std::string();
}

void EngineRun::addInputs(const std::string& application) {
  std::error_code error;
  const fs::file_status status = fs::status(application, error);
  if (!fs::exists(status)) throw std::runtime_error("no such file or directory" + didYouMeanFile(application));
  if (fs::is_regular_file(status)) {
    if (access(application.c_str(), R_OK) != 0) throw std::runtime_error(std::strerror(errno));
    return addInput(application, application);
  }
  if (!fs::is_directory(status)) throw std::runtime_error("neither a file nor a directory");
  std::vector<std::string> files;
  fs::recursive_directory_iterator entry(application, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    if (entry->is_regular_file(error)) files.push_back(entry->path().string());
    if (entry->is_symlink(error) && entry->is_directory(error)) miss(entry->path().string(), "a link to a directory");
  }
  if (error) throw std::runtime_error("cannot be read whole: " + error.message());
  std::sort(files.begin(), files.end());
  for (const std::string& file : files)
    addInput(file, file);
}

void EngineRun::addInput(const std::string& path, const std::string& shownAs) {
  const fs::path absolute = fs::absolute(path);
  std::string enginePath = absolute.string();
  // The engine passes over packages below a directory called ".fla..." and cuts long package names; where the user
  // keeps an application must not decide on its verdict.
  const bool misread = absolute.parent_path().string().find(".fla") != std::string::npos ||
                       enginePath.size() > FlashEngine_1_00::kMaxPackageName;
  if (misread) {
    const fs::path link = fs::path(directory_.path()) / "input" / std::to_string(inputs_.size());
    const bool isLong = absolute.filename().string().size() > kMaxLinkName;
    const std::string name =
        isLong ? "application" + absolute.extension().string().substr(0, kMaxLinkName) : absolute.filename().string();
    fs::create_directories(link);
    fs::create_symlink(absolute, link / name);
    enginePath = (link / name).string();
  }
  inputs_.push_back(enginePath);
  shownAs_[enginePath] = shownAs;
}

void EngineRun::takeLog(const char* function, const char* format, va_list arguments) {
  va_list first;
  va_copy(first, arguments);
  log_.push_back({function, formatted(format, arguments)});
  if (format == kPackageFound) {
    // Packages are found in the order of their extraction directories' numbers.
    const std::string directory = directory_.path() + "/" + std::to_string(packages_.size());
    packages_.push_back(directory);
    const std::string path = va_arg(first, const char*);
    shownAs_[directory] = shown(path) + "!";
    // Another package can have the name that is left of it.
    if (path.size() > FlashEngine_1_00::kMaxPackageName) miss(shown(path), "its path is too long for the engine");
  } else if (format == kRunEnded ||
             (format == kCheckpoint && log_.back().text.find("[Finished]") != std::string::npos)) {
    lookAtFiles();
  } else if (std::any_of(std::begin(kLogReasons), std::end(kLogReasons),
                         [&](const LogReason& row) { return row.format == format; })) {
    const std::string subject = va_arg(first, const char*);
    const bool hasCode = std::string_view(format).find("%d") != std::string_view::npos;
    missLogged(format, subject, hasCode ? va_arg(first, int) : kAnyCode);
  }
  va_end(first);
}

void EngineRun::missLogged(std::string_view format, const std::string& subject, int code) {
  if (subject == currentPaths.resultFile) return;  // it is of no use to us
  const auto& row = *std::find_if(std::begin(kLogReasons), std::end(kLogReasons), [&](const LogReason& reason) {
    return reason.format == format && (reason.code == code || reason.code == kAnyCode);
  });
  if (row.isEntry) {
    // The entry has no name where the package's directory is damaged.
    miss(shownAs_[packages_.back()] + (subject.empty() ? "" : "/" + subject), row.reason);
  } else if (row.reason != nullptr && !isMissed(subject)) {
    miss(shown(subject), row.reason);
  }
}

void EngineRun::miss(const std::string& part, const std::string& reason) {
  if (missed_.insert({part, reason}).second) notChecked_.push_back({part, reason});
}

// What the engine says nothing of, while the files are still there. After its own work, so that this takes none of its
// time.
void EngineRun::lookAtFiles() {
  if (std::exchange(filesLookedAt_, true)) return;
  if (options_.beforeRemoval != nullptr) options_.beforeRemoval(*engine_);
  for (const std::string& path : engine_->cutFiles) {
    if (!isMissed(path)) miss(shown(path), isFlash(path) ? kFlashCut : kSourceCut);
  }
  for (const std::vector<std::string>* files : {&inputs_, &engine_->extractedFileList}) {
    for (const std::string& path : *files) {
      if (isMissed(path)) continue;
      for (const std::string& reason : fileGaps(path))
        miss(shown(path), reason);
    }
  }
}

bool EngineRun::isMissed(const std::string& path) const {
  const std::string part = shown(path);
  const auto next = missed_.lower_bound({part, ""});
  return next != missed_.end() && next->first == part;
}

std::uint64_t EngineRun::flashFiles() const {
  const auto countIn = [](const std::vector<std::string>& files) {
    return static_cast<std::uint64_t>(std::count_if(files.begin(), files.end(), isFlash));
  };
  return countIn(inputs_) + countIn(engine_->extractedFileList);
}

std::string EngineRun::shown(const std::string& enginePath) const {
  const auto known = shownAs_.find(enginePath);
  if (known != shownAs_.end()) return known->second;
  const std::string& root = directory_.path();
  if (enginePath.compare(0, root.size() + 1, root + "/") != 0) return enginePath;
  const std::size_t slash = enginePath.find('/', root.size() + 1);
  const auto package = shownAs_.find(enginePath.substr(0, slash));
  return package == shownAs_.end() ? enginePath : package->second + enginePath.substr(slash);
}

std::string EngineRun::asOnDevice(std::string text) const {
  return CStringUtil().customReplace(text, directory_.path(), "/tmp");
}
