// Each table of the catalogue is one statement of SQL over the views of the schema; nothing is counted here.
// Test: tests/store/Catalogue_test.cpp.

#include "store/Catalogue.h"

#include <algorithm>
#include <unordered_set>

#include "store/Result.h"

namespace store {
namespace {

// Results of which several applications have the same count as often as there are applications.
constexpr const char* kCopies = R"(
CREATE TEMP TABLE IF NOT EXISTS copies(result_id INTEGER PRIMARY KEY, number INTEGER NOT NULL);
DELETE FROM copies;
INSERT INTO copies SELECT result_id, count(*) FROM latest WHERE result_id IS NOT NULL GROUP BY result_id;
)";

std::vector<Tally> tallies(Connection& connection, const std::string& sql) {
  std::vector<Tally> list;
  Statement all(connection, sql);
  while (all.next()) {
    list.push_back(
        {all.bytes(0), static_cast<std::uint64_t>(all.integer(1)), static_cast<std::uint64_t>(all.integer(2))});
  }
  return list;
}

// One pass over the index of calls by method: first how often in each result, then in how many applications.
std::vector<MethodTally> methodsOf(Connection& connection, const std::unordered_set<std::string>& documented) {
  std::vector<MethodTally> list;
  Statement all(connection,
                "SELECT plugin.name, method.name, applications, calls FROM ("
                "  SELECT method_id, sum(number) AS applications, sum(number * uses) AS calls FROM ("
                "    SELECT method_id, result_id, count(*) AS uses FROM call GROUP BY method_id, result_id"
                "  ) JOIN copies USING(result_id) GROUP BY method_id"
                ") JOIN method ON method.id = method_id JOIN plugin ON plugin.id = plugin_id "
                "ORDER BY applications DESC, plugin.name, method.name");
  while (all.next()) {
    list.push_back({all.bytes(0), all.bytes(1), documented.count(all.bytes(1)) > 0,
                    static_cast<std::uint64_t>(all.integer(2)), static_cast<std::uint64_t>(all.integer(3))});
  }
  return list;
}

std::vector<RunTally> runsOf(Connection& connection, const std::vector<char>& verdictOfResult) {
  std::vector<RunTally> runs;
  Statement list(connection,
                 "SELECT run.id, name, tool, datetime(started, 'unixepoch'), finished IS NOT NULL FROM run "
                 "JOIN settings ON settings.id = settings_id ORDER BY run.id");
  Statement seen(connection, "SELECT result_id FROM application WHERE run_id = ?");
  while (list.next()) {
    RunTally run{list.bytes(1), list.bytes(2), list.bytes(3), list.integer(4) != 0};
    for (seen.with(list.integer(0)); seen.next(); ++run.applications) {
      const auto result = static_cast<std::size_t>(seen.integer(0));
      const bool isKnown = !seen.isNull(0) && result < verdictOfResult.size();
      ++run.verdicts[isKnown ? static_cast<std::size_t>(verdictOfResult[result])
                             : static_cast<std::size_t>(Verdict::notChecked)];
    }
    runs.push_back(run);
  }
  return runs;
}

// Whether `name` is the plug-in that `wanted` means.
bool isPlugin(const std::string& name, const std::string& wanted) {
  if (wanted.empty() || name == wanted) return true;
  const std::string suffix = "-" + wanted;
  return name.size() > suffix.size() && name.compare(name.size() - suffix.size(), suffix.size(), suffix) == 0;
}

}  // namespace

Catalogue catalogueOf(Store& store, const Database& database) {
  Connection& connection = store.connection();
  Catalogue catalogue;
  catalogue.database = database.path;
  const Judgement judgement = judge(store, database, {}, nullptr);
  catalogue.applications = judgement.applications;
  std::copy(std::begin(judgement.after), std::end(judgement.after), std::begin(catalogue.verdicts));
  connection.execute(kCopies);
  std::unordered_set<std::string> documented;
  for (const auto& [plugin, name] : database.methods)
    documented.insert(name);
  catalogue.methods = methodsOf(connection, documented);
  for (const MethodTally& method : catalogue.methods)
    catalogue.calls += method.calls;
  catalogue.plugins =
      tallies(connection,
              "SELECT plugin.name, sum(number) AS applications, sum(number * uses) FROM ("
              "  SELECT plugin_id, result_id, sum(uses) AS uses FROM ("
              "    SELECT method_id, result_id, count(*) AS uses FROM call GROUP BY method_id, result_id"
              "  ) JOIN method ON method.id = method_id GROUP BY plugin_id, result_id"
              ") JOIN copies USING(result_id) JOIN plugin ON plugin.id = plugin_id GROUP BY plugin_id "
              "ORDER BY applications DESC, plugin.name");
  catalogue.reasons =
      tallies(connection,
              "SELECT text.bytes, sum(number) AS applications, sum(number * parts) FROM ("
              "  SELECT reason_id, result_id, count(*) AS parts FROM missed GROUP BY reason_id, result_id"
              ") JOIN copies USING(result_id) JOIN text ON text.id = reason_id GROUP BY reason_id "
              "ORDER BY applications DESC, text.bytes");
  catalogue.failures = tallies(
      connection,
      "SELECT coalesce(latest.failure, result.failure) AS failure, count(*) AS applications, 0 FROM latest "
      "LEFT JOIN result ON result.id = latest.result_id WHERE coalesce(latest.failure, result.failure) IS NOT NULL "
      "GROUP BY 1 ORDER BY applications DESC, 1");
  catalogue.libraries = tallies(connection,
                                "SELECT text.bytes, sum(number) AS applications, 0 FROM ("
                                "  SELECT DISTINCT library_id, result_id FROM recognised"
                                ") JOIN copies USING(result_id) JOIN text ON text.id = library_id GROUP BY library_id "
                                "ORDER BY applications DESC, text.bytes");
  catalogue.runs = runsOf(connection, judgement.verdicts);
  return catalogue;
}

std::vector<Use> usesOf(Store& store, const std::string& plugin, const std::string& method) {
  Connection& connection = store.connection();
  Statement methods(connection,
                    "SELECT method.id, plugin.name FROM method JOIN plugin ON plugin.id = plugin_id "
                    "WHERE method.name = ? ORDER BY plugin.name");
  Statement calls(connection,
                  "SELECT path.name, file.bytes, line, column, found, confidence FROM call "
                  "JOIN application ON application.result_id = call.result_id JOIN path ON path.id = path_id "
                  "JOIN text AS file ON file.id = file_id WHERE method_id = ? AND run_id = "
                  "(SELECT max(run_id) FROM application AS other WHERE other.path_id = application.path_id) "
                  "ORDER BY path.name, file.bytes, line, column, number");
  std::vector<Use> uses;
  for (methods.with(method); methods.next();) {
    const std::string name = methods.bytes(1);
    if (!isPlugin(name, plugin)) continue;
    for (calls.with(methods.integer(0)); calls.next();) {
      const std::string application = calls.bytes(0);
      uses.push_back({application,
                      outside(application, calls.bytes(1)),
                      {static_cast<int>(calls.integer(2)), static_cast<int>(calls.integer(3))},
                      name,
                      method,
                      nameOf(static_cast<Call::Found>(calls.integer(4))),
                      nameOf(static_cast<Finding::Confidence>(calls.integer(5)))});
    }
  }
  return uses;
}

}  // namespace store
