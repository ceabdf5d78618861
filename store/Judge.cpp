// One pass over all calls, in the order in which they are stored: what a method is under a database is looked up by its
// number. Which methods change is known beforehand; calls are looked at again only in applications that have one of
// them. Test: tests/store/Judge_test.cpp.

#include "store/Judge.h"

#include <algorithm>
#include <map>
#include <memory>
#include <set>

namespace store {
namespace {

using Number = std::int64_t;

// By number, which counts from 1.
template <typename T>
T& at(std::vector<T>& list, Number number) {
  const auto index = static_cast<std::size_t>(std::max<Number>(number, 0));
  if (index >= list.size()) list.resize(index + 1 + index / 2);
  return list[index];
}

struct Method {
  std::string plugin;
  std::string name;
};

std::vector<Method> methodsOf(Connection& connection) {
  std::vector<Method> methods;
  Statement all(connection,
                "SELECT method.id, plugin.name, method.name FROM method JOIN plugin ON plugin.id = plugin_id");
  while (all.next())
    at(methods, all.integer(0)) = {all.bytes(1), all.bytes(2)};
  return methods;
}

// Whether each method, by its number, is documented in the names of a database.
std::vector<char> documentedIn(const std::vector<Method>& methods, const std::unordered_set<std::string>& names,
                               const std::unordered_set<std::string>& accepted) {
  std::vector<char> flags;
  flags.reserve(methods.size());
  for (const Method& method : methods)
    flags.push_back(names.count(method.name) > 0 || accepted.count(method.name) > 0 ? 1 : 0);
  return flags;
}

std::unordered_set<std::string> namesOf(Connection& connection, Number database) {
  std::unordered_set<std::string> names;
  Statement all(connection, "SELECT DISTINCT name FROM documented WHERE database_id = ?");
  for (all.with(database); all.next();)
    names.insert(all.bytes(0));
  return names;
}

// What verdicts need of a result.
struct Summary {
  bool isFailed : 1;
  bool isIncomplete : 1;
  bool hasFindings : 1;  // by the new database
};

class Judging {
 public:
  Judging(Store& store, const Database& database, const std::unordered_set<std::string>& accepted)
      : connection_(&store.connection()), accepted_(&accepted), methods_(methodsOf(*connection_)) {
    std::unordered_set<std::string> names;
    for (const auto& [plugin, name] : database.methods)
      names.insert(name);
    after_ = documentedIn(methods_, names, accepted);
    readRuns();
  }

  Judgement run(const std::function<void(const Change& change)>& tell) {
    readResults();
    readCalls();
    Statement all(*connection_,
                  "SELECT path_id, max(run_id), result_id, failure IS NOT NULL FROM application GROUP BY path_id");
    while (all.next())
      take(all.integer(0), all.integer(1), all.integer(2), all.integer(3) != 0, tell);
    for (const Summary& result : results_) {
      const Verdict verdict = verdictOf(result.isFailed, result.hasFindings, result.isIncomplete);
      judgement_.verdicts.push_back(static_cast<char>(verdict));
    }
    return std::move(judgement_);
  }

 private:
  void readRuns() {
    Statement all(*connection_, "SELECT id, database_id FROM run");
    while (all.next()) {
      auto& flags = before_[all.integer(1)];
      if (flags == nullptr) {
        flags = std::make_unique<std::vector<char>>(
            documentedIn(methods_, namesOf(*connection_, all.integer(1)), *accepted_));
      }
      databaseOf_[all.integer(0)] = all.integer(1);
    }
  }

  void readResults() {
    Statement all(*connection_, "SELECT id, failure IS NOT NULL FROM result");
    while (all.next())
      at(results_, all.integer(0)).isFailed = all.integer(1) != 0;
    Statement missed(*connection_, "SELECT DISTINCT result_id FROM missed");
    while (missed.next())
      at(results_, missed.integer(0)).isIncomplete = true;
  }

  // Findings of each result, by all databases that its runs can have had: nearly always one.
  void readCalls() {
    Statement all(*connection_, "SELECT result_id, method_id FROM call WHERE reason_id IS NULL AND confidence > 0");
    while (all.next()) {
      const Number result = all.integer(0);
      const auto method = static_cast<std::size_t>(all.integer(1));
      ++judgement_.calls;
      if (method >= after_.size()) continue;
      if (after_[method] == 0) at(results_, result).hasFindings = true;
      for (auto& [database, flags] : before_) {
        const bool was = (*flags)[method] != 0;
        if (!was) at(hadFindings_[database], result) = 1;
        if (was != (after_[method] != 0)) at(changed_[database], result) = 1;
      }
    }
  }

  void take(Number path, Number run, Number result, bool isFailed,
            const std::function<void(const Change& change)>& tell) {
    const Number database = databaseOf_[run];
    const Summary summary = isFailed ? Summary{true, false, false} : at(results_, result);
    Change change;
    change.application = path;
    change.before =
        verdictOf(summary.isFailed, !isFailed && at(hadFindings_[database], result) != 0, summary.isIncomplete);
    change.after = verdictOf(summary.isFailed, summary.hasFindings, summary.isIncomplete);
    ++judgement_.applications;
    ++judgement_.before[static_cast<std::size_t>(change.before)];
    ++judgement_.after[static_cast<std::size_t>(change.after)];
    if (summary.isFailed || at(changed_[database], result) == 0) return;
    ++judgement_.changes;
    if (change.before != Verdict::findings && change.after == Verdict::findings) ++judgement_.worse;
    if (change.before == Verdict::findings && change.after != Verdict::findings) ++judgement_.better;
    if (tell == nullptr) return;
    describe(change, result, *before_[database]);
    tell(change);
  }

  void describe(Change& change, Number result, const std::vector<char>& before) {
    if (path_.with(change.application).next()) change.path = path_.bytes(0);
    for (calls_.with(result); calls_.next();) {
      const auto method = static_cast<std::size_t>(calls_.integer(0));
      if (before[method] == after_[method]) continue;
      change.methods.push_back({methods_[method].plugin, methods_[method].name,
                                static_cast<std::uint64_t>(calls_.integer(1)), after_[method] != 0});
    }
  }

  Connection* connection_;
  const std::unordered_set<std::string>* accepted_;
  std::vector<Method> methods_;
  std::vector<char> after_;                                      // whether documented, by method
  std::map<Number, std::unique_ptr<std::vector<char>>> before_;  // the same for each database of the store
  std::map<Number, Number> databaseOf_;                          // by run
  std::vector<Summary> results_;
  std::map<Number, std::vector<char>> hadFindings_;  // by database and result
  std::map<Number, std::vector<char>> changed_;
  Judgement judgement_;
  Statement path_{*connection_, "SELECT name FROM path WHERE id = ?"};
  Statement calls_{*connection_,
                   "SELECT method_id, count(*) FROM call WHERE result_id = ? AND reason_id IS NULL AND confidence > 0 "
                   "GROUP BY method_id ORDER BY method_id"};
};

}  // namespace

Judgement judge(Store& store, const Database& database, const std::unordered_set<std::string>& accepted,
                const std::function<void(const Change& change)>& tell) {
  return Judging(store, database, accepted).run(tell);
}

Judge judgeBy(const Database& database) {
  std::set<std::pair<std::string, std::string>> pairs(database.methods.begin(), database.methods.end());
  std::set<std::string> names;
  for (const auto& [plugin, name] : database.methods)
    names.insert(name);
  return [pairs = std::move(pairs), names = std::move(names)](const std::string& plugin, const std::string& method) {
    if (names.count(method) == 0) return Documented::no;
    return pairs.count({plugin, method}) > 0 ? Documented::forIt : Documented::forAnother;
  };
}

std::optional<Database> lastDatabase(Store& store) {
  Connection& connection = store.connection();
  Statement last(
      connection,
      "SELECT database.id, database.path, database.sha256 FROM run JOIN database ON database.id = database_id "
      "ORDER BY run.id DESC LIMIT 1");
  if (!last.next()) return std::nullopt;
  Database database{last.bytes(1), last.bytes(2), {}};
  Statement all(connection, "SELECT plugin, name FROM documented WHERE database_id = ? ORDER BY name, plugin");
  for (all.with(last.integer(0)); all.next();)
    database.methods.emplace_back(all.bytes(0), all.bytes(1));
  return database;
}

ApplicationReport latestReport(Store& store, Results& results, std::int64_t application, const Judge& judge) {
  Statement find(store.connection(),
                 "SELECT path.name, max(run_id), result_id, failure FROM application "
                 "JOIN path ON path.id = path_id "
                 "WHERE path_id = ?");
  if (!find.with(application).next() || find.isNull(0)) throw StoreError("an application is missing in the store");
  if (find.isNull(3)) return reportOn(results.read(find.integer(2)), find.bytes(0), {}, judge);
  ApplicationReport report;
  report.application = find.bytes(0);
  report.failure = find.bytes(3);
  conclude(report);
  return report;
}

void eachApplication(Store& store, const std::function<void(std::int64_t application)>& take) {
  Statement all(store.connection(), "SELECT id FROM path ORDER BY name");
  while (all.next())
    take(all.integer(0));
}

}  // namespace store
