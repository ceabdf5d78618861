#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "APICheckEngine/Facade.h"
#include "checker/report/Report.h"
#include "checker/run/ApplicationFiles.h"
#include "checker/run/DatabaseListing.h"
#include "checker/run/Deprecations.h"
#include "checker/run/PathNames.h"

namespace flow {
class ParseCache;
}

struct FlowOptions {
  bool isOn = false;                  // then there must be a `database`
  bool isPossible = false;            // keep findings that are only possible
  bool isPerPlugin = false;           // a method that is documented for another plug-in only counts as undocumented
  bool isDocumented = false;          // list calls of documented methods with their traces, too
  bool isLast = false;                // nothing but the report is made in this process after it
  flow::ParseCache* cache = nullptr;  // of earlier runs on the same application
  std::shared_ptr<const DatabaseListing> database = {};
  unsigned threads = 1;  // that work; the result is that of one
};

// An id that an element of a plug-in has.
struct PluginId {
  std::string id;
  std::string plugin;     // class identifier
  bool isGlobal = false;  // whether script reaches the element by a global variable of that name: none declares it
};

// Flow analysis of an application beside the engine's run: hands its files to the analysis, and adds what that found to
// the report. It only ever adds: what the engine found and flow analysis does not see stays as it is.
class FlowRun {
 public:
  // `unsaved` as in ApplicationFiles.
  FlowRun(std::string application, const Exclusions& exclusions, const UnsavedTexts* unsaved = nullptr);

  // Whether this program was built with flow analysis.
  static bool isThere();

  // Whether the analysis wants a file of this name.
  static bool reads(const std::string& path);

  // Reads the files out of packages while they are still there.
  void takeFiles(const FlashEngine_1_00::APIAnalysis& engine);

  // `names` gives the user's names for the engine's paths. Findings of the engine that the analysis made, too, become
  // certain and get their trace; others are new. What was not read stands among what was not checked.
  void run(const FlowOptions& options, const std::set<std::string>& accepted, const Deprecations& deprecations,
           const PathNames& names, ApplicationReport& report);

  // The ids of plug-in elements, of pages and of those that script makes; each once for each plug-in. In place of
  // `run`. None if this program was built without flow analysis.
  std::vector<PluginId> pluginIds(const DatabaseListing& database, const PathNames& names);

 private:
  ApplicationFiles files_;
};
