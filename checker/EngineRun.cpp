// The engine's host in this program: its paths, its log function, and one run. Test: tests/checker/Checker_test.cpp.

#include "checker/EngineRun.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string_view>

#include "platform/Limits.h"
#include "platform/Paths.h"
#include "tarvo/Print_Log.h"
#include "tarvo/api_check_engine.h"

namespace fs = std::filesystem;

namespace {

FlashEngine_1_00::EnginePaths currentPaths;
EngineRun* currentRun = nullptr;

// The formats of the log lines that tell what was found or missed.
constexpr std::string_view kPackageFound = " zip file found [%s]/ Size [%d]";
constexpr std::string_view kEntryFailed = " entry [%s] not extracted [%d] ";
constexpr std::string_view kEntryUnsafe = " unsafe entry [%s] skipped ";
constexpr std::string_view kSourceUnreadable = " file[%s] Open Error ";
constexpr std::string_view kFlashSignature = "[%s] [swfHeader] [%s]";
constexpr std::string_view kFileUnreadable = " [%s] Open Error ";

constexpr std::size_t kMaxLinkName = 100;

std::string formatted(const char* format, va_list arguments) {
  va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, arguments);
  std::string text(length > 0 ? static_cast<std::size_t>(length) + 1 : 1, '\0');
  std::vsnprintf(text.data(), text.size(), format, again);
  va_end(again);
  text.pop_back();
  return text;
}

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

EngineRun::EngineRun(const std::string& database, const std::string& application) {
  addInputs(application);
  currentPaths = {fs::absolute(database).string(), directory_.path(), directory_.path() + "/AnalysisResult"};
  run();
  noteUnreadPackages();
  if (engine_->worthfulSourceList.empty() && !anyFlash() && notChecked_.empty()) {
    notChecked_.push_back("there is neither a web source nor a Flash file in it");
  }
}

void EngineRun::run() {
  const WorkingDirectory restored;
  currentRun = this;
  createResultVector();
  engine_.emplace();
  code_ = engine_->StartAnalysis(&inputs_);
  destoryResultVector();
  currentRun = nullptr;
}

void EngineRun::addInputs(const std::string& application) {
  std::error_code error;
  const fs::file_status status = fs::status(application, error);
  if (!fs::exists(status)) throw std::runtime_error("no such file or directory");
  if (fs::is_regular_file(status)) {
    if (access(application.c_str(), R_OK) != 0) throw std::runtime_error(std::strerror(errno));
    return addInput(application, application);
  }
  if (!fs::is_directory(status)) throw std::runtime_error("neither a file nor a directory");
  std::vector<std::string> files;
  fs::recursive_directory_iterator entry(application, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    if (entry->is_regular_file(error)) files.push_back(entry->path().string());
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
  const auto subject = [&first] { return std::string(va_arg(first, const char*)); };
  if (format == kPackageFound) {
    // Packages are found in the order of their extraction directories' numbers.
    const std::string directory = directory_.path() + "/" + std::to_string(packages_.size());
    packages_.push_back(directory);
    const std::string path = subject();
    shownAs_[directory] = shown(path) + "!";
    if (path.size() > FlashEngine_1_00::kMaxPackageName) miss(shown(path), "its path is too long for the engine");
  } else if (format == kEntryFailed) {
    const std::string entry = subject();
    miss(entry.empty() ? shownAs_[packages_.back()] : shownAs_[packages_.back()] + "/" + entry,
         entry.empty() ? "its directory is damaged" : "could not be unpacked, nor what follows it");
  } else if (format == kEntryUnsafe) {
    miss(shownAs_[packages_.back()] + "/" + subject(), "its name leads out of the package");
  } else if (format == kFlashSignature) {
    (void)subject();  // the function's name
    const std::string signature = va_arg(first, const char*);
    if (signature != "FWS" && signature != "CWS") miss("a Flash file that begins with '" + signature + "'", "not read");
  } else if (format == kSourceUnreadable || format == kFileUnreadable) {
    const std::string path = subject();
    if (path != currentPaths.resultFile) miss(shown(path), "could not be read");
  }
  va_end(first);
}

void EngineRun::miss(const std::string& what, const std::string& why) {
  const std::string text = what + ": " + why;
  if (std::find(notChecked_.begin(), notChecked_.end(), text) == notChecked_.end()) notChecked_.push_back(text);
}

bool EngineRun::anyFlash() const {
  const auto isFlash = [](const std::string& file) {
    const std::string extension = CStringUtil().findFileExtention(file);
    return extension == "swf" || extension == "SWF";
  };
  return std::any_of(inputs_.begin(), inputs_.end(), isFlash) ||
         std::any_of(engine_->extractedFileList.begin(), engine_->extractedFileList.end(), isFlash);
}

void EngineRun::noteUnreadPackages() {
  for (const std::string& directory : packages_) {
    const bool hasFiles = std::any_of(
        engine_->extractedFileList.begin(), engine_->extractedFileList.end(),
        [&](const std::string& file) { return file.compare(0, directory.size() + 1, directory + "/") == 0; });
    std::string package = shownAs_[directory];
    package.pop_back();
    if (!hasFiles) miss(package, "no file could be unpacked from this package");
  }
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
