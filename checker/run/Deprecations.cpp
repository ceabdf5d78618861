// Only methods that are deprecated somewhere are kept, each with all groups that document it.
// Test: tests/checker/Deprecations_test.cpp.

#include "checker/run/Deprecations.h"

#include <algorithm>

namespace {

std::string adviceOn(const DatabaseFunction& function) {
  std::string advice;
  if (!function.deprecatedSince.empty()) advice = "deprecated since " + function.deprecatedSince;
  if (!function.replacement.empty())
    advice += (advice.empty() ? "call '" : "; call '") + function.replacement + "' instead";
  return advice;
}

}  // namespace

Deprecations::Deprecations(const DatabaseListing& database, bool isDenied) : isDenied_(isDenied) {
  std::set<std::string> deprecated;
  for (const DatabaseGroup& group : database.groups) {
    for (const DatabaseFunction& function : group.functions)
      if (function.isDeprecated) deprecated.insert(function.name);
  }
  for (const DatabaseGroup& group : database.groups) {
    for (const DatabaseFunction& function : group.functions)
      if (deprecated.count(function.name) > 0) groupsOf_[function.name].emplace_back(group.name, function);
  }
}

const DatabaseFunction* Deprecations::find(const std::string& plugin, const std::string& method) const {
  const auto groups = groupsOf_.find(method);
  if (groups == groupsOf_.end()) return nullptr;
  const auto isCurrent = [](const auto& group) { return !group.second.isDeprecated; };
  const auto& all = groups->second;
  const auto own = std::find_if(all.begin(), all.end(), [&](const auto& group) { return group.first == plugin; });
  if (own != all.end()) return isCurrent(*own) ? nullptr : &own->second;
  return std::any_of(all.begin(), all.end(), isCurrent) ? nullptr : &all.front().second;
}

std::set<std::string> Deprecations::methods() const {
  std::set<std::string> methods;
  for (const auto& [method, groups] : groupsOf_)
    methods.insert(method);
  return methods;
}

void Deprecations::judge(Finding& finding) const {
  const DatabaseFunction* function = find(finding.call.plugin, finding.call.method);
  if (function == nullptr) return;
  finding.kind = Finding::Kind::deprecated;
  finding.isOnDevice = false;
  const std::string advice = adviceOn(*function);
  finding.advice.insert(0, advice + (advice.empty() || finding.advice.empty() ? "" : "; "));
  const bool counts = isDenied_ && finding.confidence != Finding::Confidence::possible;
  finding.status = counts ? Finding::Status::reported : Finding::Status::noted;
}
