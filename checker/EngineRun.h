#pragma once

#include <cstdarg>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "APICheckEngine/APIAnalysis.h"
#include "checker/PrivateDirectory.h"

// A part of an application that the engine did not look at, and why, for the user.
struct NotChecked {
  std::string part;
  std::string reason;
};

struct LogLine {
  std::string function;
  std::string text;
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
  EngineRun(const std::string& database, const std::string& application);

  RunResult code() const { return code_; }
  const FlashEngine_1_00::APIAnalysis& engine() const { return *engine_; }
  const std::vector<LogLine>& log() const { return log_; }

  // What the engine did not look at.
  const std::vector<NotChecked>& notChecked() const { return notChecked_; }

  // Whether there was nothing of what the engine looks at: neither a web source nor a Flash file.
  bool foundNothing() const;

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

  PrivateDirectory directory_;
  std::vector<LogLine> log_;
  std::vector<NotChecked> notChecked_;
  std::set<std::pair<std::string, std::string>> missed_;  // the same, to be found
  bool filesLookedAt_ = false;
  std::vector<std::string> inputs_;             // as the engine gets them
  std::map<std::string, std::string> shownAs_;  // those, and the extraction directories, by the engine's path
  std::vector<std::string> packages_;           // extraction directories, in the order of their numbers
  std::optional<FlashEngine_1_00::APIAnalysis> engine_;
  RunResult code_ = RUN_SUCCESS;
};
