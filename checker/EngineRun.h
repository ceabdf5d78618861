#pragma once

#include <cstdarg>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"
#include "checker/PrivateDirectory.h"
#include "checker/Report.h"

// What takes part in a run.
struct EngineRunOptions {
  FlashEngine_1_00::CallWatch watch;
  std::function<void(const FlashEngine_1_00::APIAnalysis&)> beforeRemoval;  // extracted files are still there; or null
};

// One application's run of the engine, with everything the engine knows afterwards.
//
// The engine expands packages and writes its result file in a private directory that lives as long as this object. One
// run at a time; the working directory of the process is restored after it.
class EngineRun {
 public:
  // `application` is a package, a directory (its files, recursively, sorted) or a single file; `database` an API
  // database. Relative paths count from the current directory. Throws std::runtime_error with a message for the user if
  // the application cannot be read.
  EngineRun(const std::string& database, const std::string& application, EngineRunOptions options = {});

  RunResult code() const { return code_; }

  // Why the application could not be checked at all; empty if it could.
  std::string failure() const;

  // The line of a finding on the device, by the engine's path, line and method; with its line feed.
  std::string findingLine(const std::string& path, int line, const std::string& method) const;

  // The finding lines that the host gets on the device.
  std::vector<std::string> findingLines() const;

  // What came out, by all of these.
  Verdict verdict() const { return verdictOf(!failure().empty(), !engine_->resultList.empty(), !notChecked_.empty()); }

  const FlashEngine_1_00::APIAnalysis& engine() const { return *engine_; }
  const std::vector<LogLine>& log() const { return log_; }

  // What the engine did not look at.
  const std::vector<NotChecked>& notChecked() const { return notChecked_; }

  // How many files there were of those that the engine looks at.
  std::uint64_t webSources() const { return engine_->worthfulSourceList.size(); }
  std::uint64_t flashFiles() const;

  // The user's name for a path of the engine: as given for the application's own files, "app.wgt!/www/js/main.js" for
  // one inside a package.
  std::string shown(const std::string& enginePath) const;

  // `text` with the private directory replaced by the device's /tmp, so that it reads as on the device.
  std::string asOnDevice(std::string text) const;

  // For the engine's log function: takes one line of the current run.
  void takeLog(const char* function, const char* format, va_list arguments);

 private:
  void addInput(const std::string& path, const std::string& shownAs);
  void addInputs(const std::string& application);
  void run();
  void miss(const std::string& part, const std::string& reason);
  void missLogged(std::string_view format, const std::string& subject, int code);
  bool isMissed(const std::string& path) const;
  void lookAtFiles();

  void hear(const FlashEngine_1_00::FoundCall& call);

  std::string database_;
  EngineRunOptions options_;
  FlashEngine_1_00::CallWatch watch_;
  PrivateDirectory directory_;
  std::vector<LogLine> log_;
  std::vector<NotChecked> notChecked_;
  std::set<std::pair<std::string, std::string>> missed_;  // the same, to be found
  bool filesLookedAt_ = false;
  std::vector<std::string> inputs_;             // as the engine gets them
  std::map<std::string, std::string> shownAs_;  // those, and the extraction directories, by the engine's path
  std::vector<std::string> packages_;           // extraction directories, in the order of their numbers
  std::optional<FlashEngine_1_00::APIAnalysis> engine_;
  std::map<std::string, std::string> deviceLines_;  // by the engine's own lines, in which paths are ours
  RunResult code_ = RUN_SUCCESS;
};
