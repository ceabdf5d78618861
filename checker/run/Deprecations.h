#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "checker/report/Report.h"
#include "checker/run/DatabaseListing.h"

// Methods that a database documents and advises against. The engine knows nothing of that: for it, and for a device,
// their calls are like any other.
class Deprecations {
 public:
  // Nothing is deprecated.
  Deprecations() = default;

  // `isDenied`: whether a call of a deprecated method counts as a finding.
  Deprecations(const DatabaseListing& database, bool isDenied);

  // Whether a call of `method` on `plugin` is advised against. The plug-in's own group decides; for a method that only
  // others document, whether all of these advise against it.
  bool has(const std::string& plugin, const std::string& method) const { return find(plugin, method) != nullptr; }

  // Methods that are deprecated for any plug-in.
  std::set<std::string> methods() const;

  // Makes a finding, whose call is of a documented method, one of this kind, with its advice and status. Nothing if the
  // method is not deprecated.
  void judge(Finding& finding) const;

 private:
  const DatabaseFunction* find(const std::string& plugin, const std::string& method) const;

  std::map<std::string, std::vector<std::pair<std::string, DatabaseFunction>>> groupsOf_;  // by method
  bool isDenied_ = false;
};
