// Pairs first, differences then: applications by their names, findings of two applications by what stays when lines
// move. A call that is left over on both sides stands in another file now. Test: tests/checker/Comparison_test.cpp.

#include "checker/report/Comparison.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <tuple>

#include "checker/report/Characters.h"

namespace {

using What = FindingChange::What;
using Reports = std::vector<const ApplicationReport*>;

// ---- applications --------------------------------------------------------------------------------------------------

// The last component of a path, "www" of "dist/www/".
std::string fileNameOf(const std::string& path) {
  const std::size_t last = path.find_last_not_of('/');
  const std::string trimmed = path.substr(0, last == std::string::npos ? 0 : last + 1);
  return trimmed.substr(trimmed.rfind('/') + 1);
}

// How many bytes of all names are the same directories.
std::size_t commonDirectories(const Reports& reports) {
  if (reports.empty()) return 0;
  std::string common = reports.front()->application;
  common.resize(common.rfind('/') == std::string::npos ? 0 : common.rfind('/') + 1);
  for (const ApplicationReport* report : reports) {
    const std::string& name = report->application;
    while (name.compare(0, common.size(), common) != 0)
      common.resize(common.size() < 2 || common.rfind('/', common.size() - 2) == std::string::npos
                        ? 0
                        : common.rfind('/', common.size() - 2) + 1);
  }
  return common.size();
}

using Pair = std::pair<const ApplicationReport*, const ApplicationReport*>;  // older, newer; one can be null

// Takes the pairs whose keys are equal, and no other has, out of both lists.
template <typename OlderKey, typename NewerKey>
void takePairs(Reports& older, Reports& newer, std::map<const ApplicationReport*, const ApplicationReport*>& pairs,
               const OlderKey& olderKey, const NewerKey& newerKey) {
  std::map<std::string, std::pair<Reports, Reports>> byKey;
  for (const ApplicationReport* report : older)
    byKey[olderKey(*report)].first.push_back(report);
  for (const ApplicationReport* report : newer)
    byKey[newerKey(*report)].second.push_back(report);
  const auto remove = [](Reports& list, const ApplicationReport* report) {
    list.erase(std::find(list.begin(), list.end(), report));
  };
  for (const auto& [key, both] : byKey) {
    if (both.first.size() != 1 || both.second.size() != 1) continue;
    pairs[both.second.front()] = both.first.front();
    remove(older, both.first.front());
    remove(newer, both.second.front());
  }
}

Reports listOf(const Version& version) {
  Reports list;
  for (const ApplicationReport& report : version.applications)
    list.push_back(&report);
  return list;
}

std::vector<Pair> pairsOf(const Version& older, const Version& newer) {
  Reports olders = listOf(older);
  Reports newers = listOf(newer);
  const std::size_t olderCommon = commonDirectories(olders);
  const std::size_t newerCommon = commonDirectories(newers);
  std::map<const ApplicationReport*, const ApplicationReport*> known;
  const auto whole = [](const ApplicationReport& report) { return utf8(report.application); };
  const auto below = [](std::size_t common) {
    return [common](const ApplicationReport& report) { return utf8(report.application.substr(common)); };
  };
  const auto file = [](const ApplicationReport& report) { return utf8(fileNameOf(report.application)); };
  const auto any = [](const ApplicationReport&) { return std::string(); };
  const bool isOnly = olders.size() == 1 && newers.size() == 1;
  takePairs(olders, newers, known, whole, whole);
  takePairs(olders, newers, known, below(olderCommon), below(newerCommon));
  takePairs(olders, newers, known, file, file);
  if (isOnly) takePairs(olders, newers, known, any, any);

  std::vector<Pair> pairs;
  for (const ApplicationReport& report : newer.applications) {
    const auto found = known.find(&report);
    pairs.emplace_back(found == known.end() ? nullptr : found->second, &report);
  }
  for (const ApplicationReport* report : olders)
    pairs.emplace_back(report, nullptr);
  return pairs;
}

// ---- findings ------------------------------------------------------------------------------------------------------

// `path` without its application's.
std::string inside(const std::string& path, const std::string& application) {
  if (path.compare(0, application.size(), application) != 0) return path;
  return path.substr(std::min(path.find_first_not_of("!/", application.size()), path.size()));
}

std::string withoutBlanks(std::string code) {
  code.erase(std::remove_if(code.begin(), code.end(), [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }),
             code.end());
  return code;
}

using Identity = std::vector<std::string>;

Identity identityOf(const Finding& finding) {
  return {finding.fingerprint, utf8(finding.call.plugin), utf8(finding.call.method)};
}

// What is left of a call in another file.
Identity callOf(const Finding& finding) {
  const Call& call = finding.call;
  return {utf8(call.plugin), utf8(call.method), nameOf(call.found), utf8(withoutBlanks(call.code))};
}

using Findings = std::vector<const Finding*>;

Findings listOf(const ApplicationReport* report) {
  Findings list;
  if (report == nullptr) return list;
  for (const Finding& finding : report->findings)
    list.push_back(&finding);
  return list;
}

// The findings of two applications, in pairs; the rest stays in the lists.
class FindingPairs {
 public:
  FindingPairs(Findings older, Findings newer) : older_(std::move(older)), newer_(std::move(newer)) {
    takePairs(identityOf);
    takePairs(callOf);
  }

  const std::vector<std::pair<const Finding*, const Finding*>>& pairs() const { return pairs_; }
  const Findings& older() const { return older_; }
  const Findings& newer() const { return newer_; }

 private:
  // The first of several with the first, and so on.
  void takePairs(Identity (*keyOf)(const Finding&)) {
    std::map<Identity, Findings> byKey;
    for (auto finding = older_.rbegin(); finding != older_.rend(); ++finding)
      byKey[keyOf(**finding)].push_back(*finding);
    std::set<const Finding*> taken;
    Findings rest;
    for (const Finding* finding : newer_) {
      const auto same = byKey.find(keyOf(*finding));
      if (same == byKey.end() || same->second.empty()) {
        rest.push_back(finding);
        continue;
      }
      pairs_.emplace_back(same->second.back(), finding);
      taken.insert(same->second.back());
      same->second.pop_back();
    }
    newer_ = std::move(rest);
    older_.erase(
        std::remove_if(older_.begin(), older_.end(), [&](const Finding* each) { return taken.count(each) > 0; }),
        older_.end());
  }

  Findings older_;
  Findings newer_;
  std::vector<std::pair<const Finding*, const Finding*>> pairs_;
};

// What became of a finding that both versions have; nothing if it is where it was.
std::optional<What> changeOf(const Finding& older, const std::string& olderName, const Finding& newer,
                             const std::string& newerName) {
  if (counts(newer.status) != counts(older.status)) return counts(newer.status) ? What::added : What::gone;
  const Position before = older.call.place;
  const Position now = newer.call.place;
  const bool isThere = before.line == now.line && before.column == now.column &&
                       utf8(inside(older.call.path, olderName)) == utf8(inside(newer.call.path, newerName));
  return isThere ? std::optional<What>() : What::moved;
}

void compareFindings(const ApplicationReport* older, const ApplicationReport* newer, ApplicationComparison& result) {
  const std::string olderName = older == nullptr ? std::string() : older->application;
  const std::string newerName = newer == nullptr ? std::string() : newer->application;
  const FindingPairs found(listOf(older), listOf(newer));
  for (const Finding* finding : found.newer())
    result.findings.push_back({What::added, *finding, false, "", {}});
  for (const Finding* finding : found.older())
    result.findings.push_back({What::gone, *finding, false, "", {}});
  for (const auto& [before, now] : found.pairs()) {
    const auto change = changeOf(*before, olderName, *now, newerName);
    if (change) {
      result.findings.push_back({*change, *now, true, before->call.path, before->call.place, before->status});
    } else {
      ++result.same;
    }
  }
  const auto order = [](const FindingChange& change) {
    const Call& call = change.finding.call;
    return std::tie(change.what, call.path, call.place.line, call.place.column);
  };
  std::stable_sort(result.findings.begin(), result.findings.end(),
                   [&](const FindingChange& a, const FindingChange& b) { return order(a) < order(b); });
}

// ---- everything else -----------------------------------------------------------------------------------------------

NameChanges changesOf(const std::set<std::string>& older, const std::set<std::string>& newer) {
  NameChanges changes;
  std::set_difference(newer.begin(), newer.end(), older.begin(), older.end(), std::back_inserter(changes.came));
  std::set_difference(older.begin(), older.end(), newer.begin(), newer.end(), std::back_inserter(changes.went));
  return changes;
}

std::set<std::string> pluginsOf(const ApplicationReport& report) {
  std::set<std::string> plugins;
  for (const PluginElement& element : report.elements)
    plugins.insert(utf8(element.plugin));
  for (const Binding& binding : report.bindings)
    plugins.insert(utf8(binding.plugin));
  for (const Finding& finding : report.findings)
    plugins.insert(utf8(finding.call.plugin));
  for (const DocumentedUse& use : report.documentedUses)
    plugins.insert(utf8(use.plugin));
  return plugins;
}

std::set<std::string> filesOf(const ApplicationReport& report) {
  std::set<std::string> files;
  for (const std::string& path : report.files)
    files.insert(utf8(inside(path, report.application)));
  files.erase("");  // an application of one file
  return files;
}

using Calls = std::map<std::pair<std::string, std::string>, CallChange>;

// Adds the calls of a version by their plug-ins and methods, into one of the two numbers.
void addCalls(const ApplicationReport& report, std::uint64_t CallChange::*number, Calls& calls) {
  const auto add = [&](const std::string& plugin, const std::string& method, std::uint64_t count) {
    if (method.empty()) return;
    CallChange& change = calls[{utf8(plugin), utf8(method)}];
    change.plugin = utf8(plugin);
    change.method = utf8(method);
    change.*number += count;
  };
  for (const Finding& finding : report.findings)
    add(finding.call.plugin, finding.call.method, 1);
  for (const Undetermined& item : report.undetermined)
    add(item.call.plugin, item.call.method, 1);
  for (const DocumentedUse& use : report.documentedUses)
    add(use.plugin, use.method, use.calls);
}

std::vector<CallChange> callChanges(const ApplicationReport& older, const ApplicationReport& newer) {
  Calls calls;
  addCalls(older, &CallChange::older, calls);
  addCalls(newer, &CallChange::newer, calls);
  std::vector<CallChange> changes;
  for (const auto& [name, change] : calls) {
    if (change.older != change.newer) changes.push_back(change);
  }
  return changes;
}

// Parts that only the newer version did not have looked at.
std::vector<NotChecked> newlyNotChecked(const ApplicationReport& older, const ApplicationReport& newer) {
  const auto keyOf = [](const NotChecked& item, const std::string& application) {
    return std::pair(utf8(inside(item.part, application)), utf8(item.reason));
  };
  std::set<std::pair<std::string, std::string>> known;
  for (const NotChecked& item : older.notChecked)
    known.insert(keyOf(item, older.application));
  std::vector<NotChecked> parts;
  for (const NotChecked& item : newer.notChecked) {
    if (known.count(keyOf(item, newer.application)) == 0) parts.push_back(item);
  }
  return parts;
}

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words)
    text += (text.empty() ? "" : ", ") + word;
  return text.empty() ? "none" : text;
}

// What keeps the comparison of two applications from being whole.
std::vector<std::string> notesOn(const ApplicationReport& older, const ApplicationReport& newer) {
  std::vector<std::string> notes;
  for (const ApplicationReport* report : {&older, &newer}) {
    const bool isOlder = report == &older;
    const std::string version = isOlder ? "the older version" : "the newer version";
    if (report->verdict == Verdict::notChecked) {
      notes.push_back(version + " could not be checked: " + report->failure);
    } else if (report->files.empty()) {
      notes.push_back("calls and files are not compared: the report of " + version +
                      " has no list of files, as --all makes one");
    }
    if (report->behindStops > 0)
      notes.push_back(version + " has " + std::to_string(report->behindStops) +
                      " more uses of undocumented APIs, which its check did not list");
  }
  const bool areChecked = older.verdict != Verdict::notChecked && newer.verdict != Verdict::notChecked;
  if (areChecked && older.rules != newer.rules)
    notes.push_back("other rules ran: " + joined(older.rules) + "; now " + joined(newer.rules));
  return notes;
}

void compareBoth(const ApplicationReport& older, const ApplicationReport& newer, ApplicationComparison& result) {
  result.notes = notesOn(older, newer);
  if (newer.verdict == Verdict::notChecked) return;  // nothing is known to be gone
  compareFindings(&older, &newer, result);
  result.notChecked = newlyNotChecked(older, newer);
  if (older.verdict == Verdict::notChecked) return;
  result.plugins = changesOf(pluginsOf(older), pluginsOf(newer));
  if (older.files.empty() || newer.files.empty()) return;
  result.calls = callChanges(older, newer);
  result.files = changesOf(filesOf(older), filesOf(newer));
}

ApplicationComparison compared(const ApplicationReport* older, const ApplicationReport* newer) {
  ApplicationComparison result;
  if (older != nullptr) {
    result.older = older->application;
    result.olderVerdict = older->verdict;
  }
  if (newer != nullptr) {
    result.newer = newer->application;
    result.newerVerdict = newer->verdict;
  }
  if (older != nullptr && newer != nullptr) {
    compareBoth(*older, *newer, result);
    return result;
  }
  compareFindings(older, newer, result);
  if (newer == nullptr) return result;
  result.notChecked = newer->notChecked;
  if (newer->verdict == Verdict::notChecked) result.notes.push_back("it could not be checked: " + newer->failure);
  return result;
}

std::vector<std::string> notesOn(const RunFacts& older, const RunFacts& newer) {
  std::vector<std::string> notes;
  if (older.databaseSha256 != newer.databaseSha256 && !older.databaseSha256.empty() && !newer.databaseSha256.empty())
    notes.push_back("the database is another one: was " + older.database + ", is " + newer.database);
  if (older.tool != newer.tool)
    notes.push_back("the checker is of another version: was " + older.tool + ", is " + newer.tool);
  return notes;
}

}  // namespace

std::uint64_t ApplicationComparison::countOf(What what) const {
  return static_cast<std::uint64_t>(std::count_if(findings.begin(), findings.end(), [&](const FindingChange& change) {
    return change.what == what && (what != What::added || counts(change.finding.status));
  }));
}

Comparison compare(const Version& older, const Version& newer) {
  Comparison comparison{older.facts, newer.facts, notesOn(older.facts, newer.facts), {}};
  for (const auto& [before, now] : pairsOf(older, newer))
    comparison.applications.push_back(compared(before, now));
  return comparison;
}

bool counts(Finding::Status status) {
  return status == Finding::Status::reported || status == Finding::Status::known;
}

const char* nameOf(What what) {
  static constexpr const char* kNames[] = {"new", "gone", "moved"};
  return kNames[static_cast<std::size_t>(what)];
}
