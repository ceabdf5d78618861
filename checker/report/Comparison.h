#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "checker/report/Report.h"

// Two versions of applications side by side, as plain data: what came, what went and what moved.

// A finding that the versions do not have in the same place.
struct FindingChange {
  enum class What {
    added,  // only the newer version has it, or it did not count before: it was accepted or only noted
    gone,   // only the older version has it, or it does not count any more
    moved,  // both have it, at another line or in another file
  };

  What what = What::added;
  Finding finding;        // as the newer version has it; of one that only the older has, as that has it
  bool isInBoth = false;  // the next three are from the older version then
  std::string olderPath;  // of the file
  Position olderPlace;
  Finding::Status olderStatus = Finding::Status::reported;
};

// A method that is not called as often as before. Either number can be 0.
struct CallChange {
  std::string plugin;
  std::string method;
  std::uint64_t older = 0;
  std::uint64_t newer = 0;
};

// Names that only one version has.
struct NameChanges {
  std::vector<std::string> came;
  std::vector<std::string> went;
};

// An application in both versions, or in one of them.
struct ApplicationComparison {
  std::string older;  // names; empty: the version does not have it
  std::string newer;
  Verdict olderVerdict = Verdict::clean;
  Verdict newerVerdict = Verdict::clean;
  std::vector<std::string> notes;  // what keeps the comparison from being whole, for people

  std::vector<FindingChange> findings;  // new ones, then those that are gone, then those that moved; each by place
  std::uint64_t same = 0;               // findings that neither came nor went nor moved
  std::vector<NotChecked> notChecked;   // parts of the newer version that only there were not looked at
  std::vector<CallChange> calls;        // by plug-in and method
  NameChanges plugins;
  NameChanges files;  // by their paths inside of the application

  // How many findings of a kind there are; of new ones, those that count.
  std::uint64_t countOf(FindingChange::What what) const;
};

struct Comparison {
  RunFacts older;
  RunFacts newer;
  std::vector<std::string> notes;                   // how the checks of the versions differ, for people
  std::vector<ApplicationComparison> applications;  // in the order of the newer version, then those that went
};

// A version: what a check or a report says of its applications.
struct Version {
  RunFacts facts;
  std::vector<ApplicationReport> applications;
};

// Applications are the same if they are the only ones, or have the same name, the same path below the directories that
// all of their version have in common, or a file's name that no other one has. Findings are the same if they have the
// same fingerprint, plug-in and method; or else, in another file, the same call.
Comparison compare(const Version& older, const Version& newer);

// Whether this status makes an application one with findings, unless a baseline excuses it.
bool counts(Finding::Status status);

// "new", "gone", "moved"
const char* nameOf(FindingChange::What what);
