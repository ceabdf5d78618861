#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "store/Store.h"

// All verdicts of a store under a database, without a package being opened.

namespace store {

// A method whose calls decide on a change.
struct ChangedMethod {
  std::string plugin;
  std::string name;
  std::uint64_t calls = 0;
  bool isDocumented = false;  // now; it was not before
};

// An application whose verdict is another one, or rests on other methods.
struct Change {
  std::int64_t application = 0;  // number of its path
  std::string path;
  Verdict before = Verdict::clean;
  Verdict after = Verdict::clean;
  std::vector<ChangedMethod> methods;
};

struct Judgement {
  std::uint64_t applications = 0;
  std::uint64_t calls = 0;
  std::uint64_t before[4] = {};  // applications of each Verdict
  std::uint64_t after[4] = {};
  std::uint64_t changes = 0;
  std::uint64_t worse = 0;     // of these, applications that have findings only now
  std::uint64_t better = 0;    // and those that have none any more
  std::vector<char> verdicts;  // by the number of a result: its Verdict by the database
};

// Judges the applications of `store`, each as its last run saw it, by `database`; what was before is what the database
// of that run says. `accepted` methods count as documented before and after. Tells of each change as it is found, in
// the order of the paths' numbers: of a verdict, or of a method that makes or unmakes a finding.
//
// Memory: a few bytes for each result and each path, none for a call.
Judgement judge(Store& store, const Database& database, const std::unordered_set<std::string>& accepted,
                const std::function<void(const Change& change)>& tell);

// Who says what is documented in `database`. It must outlive what is returned.
Judge judgeBy(const Database& database);

// The database that the last run was judged by; nothing if the store has no run.
std::optional<Database> lastDatabase(Store& store);

// The report of the application whose path has this number, as its last run saw it.
ApplicationReport latestReport(Store& store, Results& results, std::int64_t application, const Judge& judge);

// The numbers of all applications' paths, in the order of their names.
void eachApplication(Store& store, const std::function<void(std::int64_t application)>& take);

}  // namespace store
