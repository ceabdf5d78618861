// Inputs are read side by side, in the order of the contents' hashes and then of the paths, so that numbers are given
// in an order that all inputs share. Names get theirs when they are first used. Test: tests/store/Merge_test.cpp.

#include "store/Merge.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <tuple>

#include "checker/report/ReportFile.h"

namespace fs = std::filesystem;

namespace store {
namespace {

using Number = std::int64_t;
using SettingsKey = std::tuple<std::string, std::string, std::string>;  // tool, engine, options
using RunKey = std::tuple<std::string, SettingsKey, std::string>;       // name, settings, the database's hash

constexpr const char* kFromJson = "its report does not say what was checked";

// ---- inputs --------------------------------------------------------------------------------------------------------

struct RunTimes {
  Number started = 0;
  std::optional<Number> finished;
};

// An input, with what it calls its settings and runs.
struct Input {
  explicit Input(const std::string& path) : store(path, Store::Mode::read), results(store.connection()) {
    Statement all(store.connection(), "SELECT id, tool, engine, options FROM settings");
    while (all.next())
      settings[all.integer(0)] = {all.bytes(1), all.bytes(2), all.bytes(3)};
    Statement list(store.connection(),
                   "SELECT run.id, name, settings_id, database.sha256, started, finished FROM run "
                   "JOIN database ON database.id = database_id");
    while (list.next()) {
      runs[list.integer(0)] = {list.bytes(1), settings[list.integer(2)], list.bytes(3)};
      times[list.integer(0)] = {list.integer(4),
                                list.isNull(5) ? std::nullopt : std::optional<Number>(list.integer(5))};
    }
  }

  Store store;
  Results results;
  std::map<Number, SettingsKey> settings;
  std::map<Number, RunKey> runs;
  std::map<Number, RunTimes> times;
};

// A result of an input, as far as the merge decides by it; the one to keep stands first.
struct Candidate {
  std::string suffix;
  Number settings;
  bool isFailed;
  std::string digest;
  Number checked;
  double seconds;
  std::size_t input;
  Number number;

  auto identity() const { return std::tie(suffix, settings); }
  auto rank() const { return std::tie(suffix, settings, isFailed, digest, checked, seconds); }
};

// What a run says of a path; the one to keep stands last.
struct Seen {
  Number run;
  bool hasResult;
  Number checked;
  std::string sha256;
  std::string suffix;
  Number settings;
  std::string failure;

  auto rank() const { return std::tie(run, hasResult, checked, sha256, suffix, settings, failure); }
};

// Texts before BLOBs, as SQLite orders them.
using PathKey = std::pair<bool, std::string>;

// The rows of a query on each input, in groups of the same key.
template <typename Key>
class SideBySide {
 public:
  using KeyOf = Key (*)(const Statement& row);

  SideBySide(const std::vector<std::unique_ptr<Input>>& inputs, const char* query, KeyOf keyOf) : keyOf_(keyOf) {
    for (const auto& input : inputs) {
      rows_.push_back(std::make_unique<Statement>(input->store.connection(), query));
      advance(rows_.size() - 1);
    }
  }

  // Takes each row of the next key; false if there is none.
  template <typename Take>
  bool next(Key& key, Take take) {
    if (keys_.empty()) return false;
    key = keys_.begin()->first;
    while (!keys_.empty() && keys_.begin()->first == key) {
      const std::size_t input = keys_.begin()->second;
      keys_.erase(keys_.begin());
      take(input, *rows_[input]);
      advance(input);
    }
    return true;
  }

 private:
  void advance(std::size_t input) {
    if (rows_[input]->next()) keys_.emplace(keyOf_(*rows_[input]), input);
  }

  KeyOf keyOf_;
  std::vector<std::unique_ptr<Statement>> rows_;
  std::set<std::pair<Key, std::size_t>> keys_;
};

// ---- the merge -----------------------------------------------------------------------------------------------------

class Merger {
 public:
  Merger(const std::string& path, std::vector<std::unique_ptr<Input>>& inputs)
      : inputs_(inputs), out_(path, Store::Mode::write), results_(out_.connection()) {
    // Only a whole file takes its place.
    out_.connection().execute("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF");
  }

  Merged run() {
    Transaction transaction(out_.connection());
    addRuns();
    addResults();
    addConflicts();
    addApplications();
    transaction.commit();
    return std::move(merged_);
  }

 private:
  void addRuns() {
    std::set<SettingsKey> settings;
    std::map<std::string, Database> databases;
    std::map<RunKey, RunTimes> runs;
    for (const auto& input : inputs_) {
      for (const auto& [number, key] : input->settings)
        settings.insert(key);
      collect(input->store.connection(), databases);
      for (const auto& [number, key] : input->runs)
        join(runs, key, input->times[number]);
    }
    for (const auto& [tool, engine, options] : settings)
      settings_[{tool, engine, options}] = numberOf(out_.connection(), Settings{tool, engine, options});
    for (const auto& [hash, database] : databases)
      databases_[hash] = numberOf(out_.connection(), database);
    addInOrder(runs);
  }

  static void collect(Connection& connection, std::map<std::string, Database>& databases) {
    Statement all(connection, "SELECT id, sha256, path FROM database");
    Statement methods(connection, "SELECT plugin, name FROM documented WHERE database_id = ?");
    while (all.next()) {
      const auto [found, isNew] = databases.try_emplace(all.bytes(1), Database{all.bytes(2), all.bytes(1), {}});
      found->second.path = std::min(found->second.path, all.bytes(2));
      auto& list = found->second.methods;
      for (methods.with(all.integer(0)); methods.next();)
        list.emplace_back(methods.bytes(0), methods.bytes(1));
      std::sort(list.begin(), list.end());
      list.erase(std::unique(list.begin(), list.end()), list.end());
    }
  }

  // A run is over when all parts of it are.
  static void join(std::map<RunKey, RunTimes>& runs, const RunKey& key, const RunTimes& times) {
    const auto [known, isNew] = runs.try_emplace(key, times);
    if (isNew) return;
    RunTimes& joined = known->second;
    joined.started = std::min(joined.started, times.started);
    joined.finished =
        joined.finished && times.finished ? std::max(joined.finished, times.finished) : std::optional<Number>();
  }

  // By when they began: the last one says what an application is now.
  void addInOrder(const std::map<RunKey, RunTimes>& runs) {
    std::vector<std::pair<Number, RunKey>> order;
    order.reserve(runs.size());
    for (const auto& [key, times] : runs)
      order.emplace_back(times.started, key);
    std::sort(order.begin(), order.end());
    Statement add(out_.connection(),
                  "INSERT INTO run(name, settings_id, database_id, started, finished) VALUES(?, ?, ?, ?, ?)");
    for (const auto& [started, key] : order) {
      const auto& [name, settings, database] = key;
      runs_[key] = add.with(name, settings_[settings], databases_[database], started, runs.at(key).finished).run();
    }
  }

  void addResults() {
    SideBySide<std::string> rows(
        inputs_,
        "SELECT sha256, suffix, settings_id, failure IS NOT NULL, digest, checked, seconds, id "
        "FROM result ORDER BY sha256",
        [](const Statement& row) { return row.bytes(0); });
    std::string hash;
    std::vector<Candidate> candidates;
    const auto take = [&](std::size_t input, const Statement& row) {
      candidates.push_back({row.bytes(1), settingsNumber(input, row.integer(2)), row.integer(3) != 0, row.bytes(4),
                            row.integer(5), row.real(6), input, row.integer(7)});
    };
    while (rows.next(hash, take)) {
      std::sort(candidates.begin(), candidates.end(),
                [](const Candidate& a, const Candidate& b) { return a.rank() < b.rank(); });
      const Candidate* kept = nullptr;
      for (const Candidate& each : candidates) {
        if (kept == nullptr || kept->identity() != each.identity()) {
          kept = &each;
          (void)results_.add(each.settings, inputs_[each.input]->results.read(each.number));
          ++merged_.results;
        } else if (each.digest != kept->digest) {
          conflicts_.emplace(hash, each.suffix, each.settings, each.digest);
        }
      }
      candidates.clear();
    }
  }

  void addConflicts() {
    for (std::size_t input = 0; input < inputs_.size(); ++input) {
      Statement all(inputs_[input]->store.connection(), "SELECT sha256, suffix, settings_id, digest FROM conflict");
      while (all.next())
        conflicts_.emplace(all.bytes(0), all.bytes(1), settingsNumber(input, all.integer(2)), all.bytes(3));
    }
    Statement add(out_.connection(), "INSERT INTO conflict(sha256, suffix, settings_id, digest) VALUES(?, ?, ?, ?)");
    for (const auto& [hash, suffix, settings, digest] : conflicts_) {
      add.with(Blob{hash}, suffix, settings, Blob{digest}).run();
      const std::string told = hexOf(hash);
      if (merged_.conflicts.empty() || merged_.conflicts.back() != told) merged_.conflicts.push_back(told);
    }
  }

  void addApplications() {
    SideBySide<PathKey> rows(inputs_,
                             "SELECT path.name, application.run_id, application.failure, application.checked, sha256, "
                             "suffix, settings_id, typeof(path.name) = 'blob' FROM path "
                             "JOIN application ON path_id = path.id LEFT JOIN result ON result.id = result_id "
                             "ORDER BY path.name",
                             [](const Statement& row) { return PathKey(row.integer(7) != 0, row.bytes(0)); });
    Names paths(out_.connection(), "path", "name");
    PathKey path;
    std::vector<Seen> seen;
    const auto take = [&](std::size_t input, const Statement& row) {
      const bool hasResult = row.isNull(2);
      seen.push_back({runs_[inputs_[input]->runs[row.integer(1)]], hasResult, row.integer(3), row.bytes(4),
                      row.bytes(5), hasResult ? settingsNumber(input, row.integer(6)) : 0, row.bytes(2)});
    };
    Statement add(out_.connection(),
                  "INSERT OR REPLACE INTO application(path_id, run_id, result_id, failure, checked) "
                  "VALUES(?, ?, ?, ?, ?)");
    while (rows.next(path, take)) {
      std::sort(seen.begin(), seen.end(), [](const Seen& a, const Seen& b) { return a.rank() < b.rank(); });
      const Number number = paths.numberOf(path.second);
      for (std::size_t i = 0; i < seen.size(); ++i) {
        if (i + 1 < seen.size() && seen[i + 1].run == seen[i].run) continue;
        const Seen& each = seen[i];
        std::optional<Number> result;
        if (each.hasResult) result = results_.find(each.settings, each.sha256, each.suffix);
        const auto failure = each.hasResult ? std::nullopt : std::optional<std::string>(each.failure);
        add.with(number, each.run, result, failure, each.checked).run();
      }
      ++merged_.applications;
      seen.clear();
    }
  }

  Number settingsNumber(std::size_t input, Number number) { return settings_[inputs_[input]->settings[number]]; }

  std::vector<std::unique_ptr<Input>>& inputs_;
  Store out_;
  Results results_;
  std::map<SettingsKey, Number> settings_;
  std::map<std::string, Number> databases_;
  std::map<RunKey, Number> runs_;
  std::set<std::tuple<std::string, std::string, Number, std::string>> conflicts_;
  Merged merged_;
};

// ---- files ---------------------------------------------------------------------------------------------------------

// A file beside `path` that goes with this object, if it has not taken a place of its own.
class Beside {
 public:
  explicit Beside(const std::string& path) : name_((fs::path(path).parent_path() / ".tarvo-check-XXXXXX").string()) {
    const int descriptor = mkstemp(name_.data());
    if (descriptor < 0) throw StoreError("no file can be made beside '" + path + "'");
    close(descriptor);
  }
  ~Beside() {
    for (const char* suffix : {"", "-journal", "-wal", "-shm"}) {
      std::error_code error;
      fs::remove(name_ + suffix, error);
    }
  }
  Beside(const Beside&) = delete;
  Beside& operator=(const Beside&) = delete;

  const std::string& name() const { return name_; }

  void takePlace(const std::string& path) const {
    const int descriptor = open(name_.c_str(), O_RDONLY | O_CLOEXEC);
    const bool isSafe = descriptor >= 0 && fsync(descriptor) == 0;
    if (descriptor >= 0) close(descriptor);
    std::error_code error;
    const fs::perms mode = fs::exists(path) ? fs::status(path, error).permissions() : fs::perms(0644);
    fs::permissions(name_, mode, error);
    if (isSafe) fs::rename(name_, path, error);
    if (!isSafe || error) throw StoreError("'" + path + "' cannot be written");
  }

 private:
  std::string name_;
};

bool isDatabase(const std::string& path) {
  constexpr std::string_view kHeader = "SQLite format 3";
  std::ifstream file(path, std::ios::binary);
  std::string start(kHeader.size(), '\0');
  if (!file.is_open()) throw StoreError("cannot read '" + path + "'");
  file.read(start.data(), static_cast<std::streamsize>(start.size()));
  return start == kHeader;
}

// The time of "2026-11-21T22:06:32Z"; 0 if it is none.
Number timeOf(const std::string& text) {
  std::tm parts{};
  return strptime(text.c_str(), "%Y-%m-%dT%H:%M:%SZ", &parts) == nullptr ? 0 : static_cast<Number>(timegm(&parts));
}

// The last line says what the run was.
void describeRun(Connection& connection, const RunFacts& facts, const std::string& lines, bool hasAllCalls,
                 const std::vector<std::string>& rules) {
  const std::string hash = bytesOfHex(facts.databaseSha256);
  Statement(connection, "UPDATE settings SET tool = ?, engine = ?, options = ?")
      .with(facts.tool, facts.engine, optionsOf(rules) + (hasAllCalls ? "" : " calls=undocumented"))
      .run();
  Statement(connection, "UPDATE database SET path = ?, sha256 = ?")
      .with(facts.database, Blob{hash.empty() ? sha256(lines) : hash})
      .run();
  Statement(connection, "UPDATE run SET name = ?, started = ?, finished = started")
      .with(facts.started.empty() ? std::string("unknown") : facts.started.substr(0, 10), timeOf(facts.started))
      .run();
}

}  // namespace

std::uint64_t importJsonLines(const std::string& lines, const std::string& path) {
  std::uint64_t without = 0;
  bool hasAllCalls = false;
  std::vector<std::string> rules;
  std::set<std::pair<std::string, std::string>> documented;
  Store store(path, Store::Mode::write);
  RunWriter run(store, {"", "", ""}, {"", sha256(lines), {}}, "lines");
  const auto take = [&](ApplicationReport&& report) {
    hasAllCalls = hasAllCalls || !report.content.empty();
    if (report.content.empty()) report.content = report.sha256;
    if (report.contentSuffix.empty()) report.contentSuffix = fs::path(report.application).extension().string();
    if (report.content.empty() && report.failure.empty()) {
      report.failure = kFromJson;
      ++without;
    }
    if (rules.empty()) rules = report.rules;
    for (const Finding& finding : report.documented)
      documented.emplace(finding.call.plugin, finding.call.method);
    report.isStored = false;
    run.add(report);
  };
  RunFacts facts;
  try {
    facts = readReport(lines, take).back().facts;
  } catch (const StoreError&) {
    throw;
  } catch (const std::runtime_error& error) {
    throw StoreError("'" + lines + "' " + error.what());
  }
  Connection& connection = store.connection();
  Transaction transaction(connection);
  if (rules.empty()) rules = {"engine"};
  describeRun(connection, facts, lines, hasAllCalls, rules);
  Statement add(connection,
                "INSERT OR IGNORE INTO documented(database_id, name, plugin) SELECT id, ?, ? FROM database");
  for (const auto& [plugin, name] : documented)
    add.with(name, plugin).run();
  transaction.commit();
  return without;
}

Merged merge(const std::string& out, const std::vector<std::string>& inputs) {
  std::set<std::string> stores;
  std::uint64_t without = 0;
  std::vector<std::unique_ptr<Beside>> imported;
  std::vector<std::string> all = inputs;
  if (fs::exists(out)) all.push_back(out);
  for (const std::string& input : all) {
    if (isDatabase(input)) {
      stores.insert(fs::canonical(input).string());
      continue;
    }
    imported.push_back(std::make_unique<Beside>(out));
    without += importJsonLines(input, imported.back()->name());
    stores.insert(imported.back()->name());
  }
  if (fs::exists(out)) Store(out, Store::Mode::write);  // brings it up to date
  const Beside made(out);
  Merged merged;
  {
    std::vector<std::unique_ptr<Input>> opened;
    opened.reserve(stores.size());
    for (const std::string& path : stores)
      opened.push_back(std::make_unique<Input>(path));
    merged = Merger(made.name(), opened).run();
  }
  made.takePlace(out);
  merged.withoutContent = without;
  return merged;
}

}  // namespace store
