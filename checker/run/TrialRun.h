#pragma once

#include <functional>
#include <set>
#include <string>

#include "APICheckEngine/Facade.h"
#include "checker/report/Excerpts.h"
#include "checker/report/Report.h"
#include "checker/run/ApplicationFiles.h"
#include "checker/run/Deprecations.h"
#include "trial/Trial.h"

struct TrialOptions {
  bool isOn = false;
  std::string browser;         // empty: chromium of the PATH
  unsigned seconds = 20;       // for a page; three times that for the application
  unsigned memory = 1024;      // MiB for all processes of the browser together; the worker's own is bounded besides
  bool callsUncalled = false;  // functions that never ran, too
};

// Seconds that a trial may take on top of what a check takes: the pages, and starting and ending the browser.
unsigned trialSeconds(const TrialOptions& options);

// The trial run of an application after the engine's: hands its files and what the engine knows to the trial, and adds
// what that found to the report. It only ever adds.
class TrialRun {
 public:
  TrialRun(std::string application, const Exclusions& exclusions);

  // Reads the application's files, while those out of packages are still there.
  void takeFiles(const FlashEngine_1_00::APIAnalysis& engine);

  // Runs the pages. `shown` gives the user's name for a path of the engine. Findings of the engine that were seen to be
  // called are confirmed; others are new; what could not be run stands among what was not checked.
  void run(const TrialOptions& options, const std::set<std::string>& accepted, const Deprecations& deprecations,
           const std::function<std::string(const std::string&)>& shown, ApplicationReport& report);

 private:
  std::set<std::string> currentMethods(const Deprecations& deprecations) const;
  void dropDocumented(const Deprecations& deprecations, trial::Result& result) const;

  ApplicationFiles files_;
  std::set<std::string> documented_;
};

// Adds to `report` what a trial has found in `files`. Without a trial of its own this can be tested.
void addTrial(const trial::Result& result, const ReportedFiles& files, const std::set<std::string>& accepted,
              const Deprecations& deprecations, ApplicationReport& report);

// The pages that an application begins with: those that its config.xml names, then each index.html, outer folders
// first; else its first page.
std::vector<std::string> startPages(const std::vector<trial::File>& files);
