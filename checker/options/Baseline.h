#pragma once

#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "checker/report/Report.h"

// The findings of an earlier check, which a later one need not report again (docs/baselines.md).
class Baseline {
 public:
  // Reads a report in the format json or jsonl. Throws std::runtime_error with a message for the user.
  explicit Baseline(const std::string& path);

  // Marks the findings that were reported then as known and makes the verdict anew. `isOnlyApplication`: whether the
  // run has no other one; then an only application of the earlier check is the same, whatever its name.
  void apply(ApplicationReport& report, bool isOnlyApplication) const;

 private:
  using Identity = std::tuple<std::string, std::string, std::string>;  // fingerprint, plug-in, method
  using Counts = std::map<Identity, int>;

  static Identity identityOf(const Finding& finding);
  Counts countsFor(const std::string& application, bool isOnlyApplication) const;

  std::vector<std::pair<std::string, Counts>> applications_;  // by their names
};
