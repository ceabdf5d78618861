#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "checker/report/Report.h"

// What several formats say of a report, in the same words. The bytes of an application stand in them as they are.

// "1 use", "2 uses"
std::string counted(std::uint64_t count, const char* one, const char* several);

// "app.wgt!/www/js/main.js:57:8", as far as it is known
std::string placeOf(const std::string& path, Position place);
std::string placeOf(const Call& call);

// "variable", "Flash look-up", "flow"
const char* wordFor(Call::Found found);

// "undocumented API 'GetSerial' on MORVANE-NAVERTIX-TUNER", "deprecated API ..."
std::string messageOf(const Finding& finding);

// "could not determine: tv.Open(1) on MORVANE-NAVERTIX-TUNER"
std::string messageOf(const Undetermined& item);

// "agreed for the hotline (Kim, until 2026-12-31)": why a finding is accepted; empty if nobody said so.
std::string acceptanceOf(const Finding& finding);

// "variable; line 51 on the device; accepted": how it was found, and what else there is to know.
std::string remarksOn(const Finding& finding);
std::string remarksOn(const Undetermined& item);

// "not checked: app.wgt!/a.swf: it is cut"
std::string lineOn(const NotChecked& item);

// "excluded: 12 files: www/node_modules (11), www/a.js"; empty if nothing is. Of many folders the first ones are named.
std::string lineOnExcluded(const ApplicationReport& report);

// A sentence that explains a term among the remarks: how a call was found, how sure a finding is, why the device's host
// does not get it.
std::vector<std::string> explanationsOf(const Finding& finding);

// "clean: 12 calls on 3 plug-ins, all documented", "2 uses of undocumented APIs (1 accepted not counted)", "could not
// check: no such file or directory": the verdict and what it rests on.
std::string verdictOn(const ApplicationReport& report);

// What is not checked stands in reports that people read up to this many times, then a count.
constexpr std::size_t kMaxNotCheckedLines = 1000;

// "and 12 other parts"; empty if all are shown.
std::string restOfNotChecked(const ApplicationReport& report);

// "12 of 30 functions ran (40 %)": of those in the files that a trial could load; empty without a trial.
std::string trialShareOf(const ApplicationReport& report);

// The names of the rules that ran, in any of some applications.
class RulesRun {
 public:
  void add(const ApplicationReport& report);

  // "engine, flow"; empty if nothing was checked.
  std::string text() const;

 private:
  std::vector<std::string> names_;
};

// Counts over the applications of a run.
struct Totals {
  std::size_t applications = 0;
  std::size_t verdicts[4] = {};  // of each Verdict
  std::size_t statuses[4] = {};  // findings of each Finding::Status
  std::size_t deprecated = 0;    // of those that are reported, calls of deprecated methods
  std::size_t undetermined = 0;
  std::size_t notChecked = 0;
  std::uint64_t excluded = 0;  // files
  double seconds = 0;
  RulesRun rules;

  void add(const ApplicationReport& report);
  std::size_t of(Verdict verdict) const { return verdicts[static_cast<std::size_t>(verdict)]; }
  std::size_t of(Finding::Status status) const { return statuses[static_cast<std::size_t>(status)]; }
};

// "12 applications: 9 clean, 2 with findings, 1 could not be checked; 5 uses of undocumented APIs (2 accepted not
// counted)"
std::string summaryOf(const Totals& totals);

constexpr const char* kInterrupted = "interrupted: applications that are not listed were not checked";
