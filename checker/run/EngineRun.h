#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "APICheckEngine/Facade.h"
#include "checker/report/Report.h"
#include "checker/run/Exclusions.h"
#include "checker/run/PathNames.h"

struct EngineRunOptions {
  std::string database;
  std::set<std::string> accepted = {};  // methods that are taken for documented ones
  bool all = false;                     // go on where the engine stops; callFound alone is told of it
  unsigned unpacked = 0;                // MiB that the packages of the application expand to; 0: as many as these:
  FlashEngine_1_00::ExpansionBounds expansion = {};
  Exclusions exclusions = {};  // files that the engine does not get
  unsigned threads = 1;        // that work; the result is that of one

  // Texts of the application's files, or of new ones, as an editor has them; or null. By path, `application` in front.
  const std::map<std::string, std::string>* unsaved = nullptr;

  // Of extracted files that are neither sources nor Flash files nor packages: whether a file of this name is kept for
  // beforeRemoval, of at most 16 MiB; or null: none is.
  std::function<bool(const std::string& path)> keeps = {};

  // Told while the engine works; or null. The second when the lists are full and extracted files still there.
  std::function<void(const FlashEngine_1_00::FoundCall& call)> callFound = {};
  std::function<void(const FlashEngine_1_00::APIAnalysis& engine)> beforeRemoval = {};
};

// What came out of one application's run of the engine. All of it is what a host on the device gets or would get.
struct Outcome {
  RunResult code = RUN_SUCCESS;
  std::string failure;                    // why the application could not be checked at all; empty if it could
  std::vector<std::string> findingLines;  // each once
  std::vector<LogLine> log;
  std::vector<Excluded> excluded;
  std::vector<NotChecked> notChecked;  // with what is behind a stop, if that was asked for
  std::uint64_t webSources = 0;        // files that the engine looks at
  std::uint64_t flashFiles = 0;
  std::unique_ptr<const FlashEngine_1_00::APIAnalysis> engine;  // with its lists
  PathNames names;                                              // for the paths in them
  std::vector<std::string> files = {};                          // of the application and of its packages, by such paths

  Verdict verdict() const { return verdictOf(!failure.empty(), !findingLines.empty(), !notChecked.empty()); }
};

// Runs the engine on `application`: a package, a directory (its files, recursively, sorted) or a single file. Relative
// paths count from the current directory. Nothing is written to the disk. One run at a time.
//
// Throws std::runtime_error with a message for the user if the application cannot be read, or if its packages expand to
// more than `unpacked`.
Outcome runEngine(const std::string& application, const EngineRunOptions& options);
