// Writing and reading of runs. Texts that repeat (plug-ins, methods, files) stand once, by number; a run's application
// points to the result of its content, which all runs share.
// Test: tests/store/Store_test.cpp.

#include "store/Store.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <utility>

namespace store {
namespace {

constexpr std::size_t kHashSize = 32;
constexpr std::size_t kMaxKnown = 50'000;  // names in memory: some MiB

// Without a flush for each application: a power failure may take the last ones, which are then checked again. The store
// itself is whole all the same.
constexpr const char* kForWriting =
    "PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL; PRAGMA cache_size = -16384;";

template <typename Map>
void bound(Map& known) {
  if (known.size() >= kMaxKnown) known.clear();
}

std::array<char, 32> keyOf(std::string_view hash, std::string_view suffix) {
  std::array<char, 32> key{};
  const std::string digest = sha256(std::string(hash) + std::string(suffix));
  std::copy(digest.begin(), digest.end(), key.begin());
  return key;
}

std::string today() {
  const std::time_t time = static_cast<std::time_t>(now());
  std::tm parts{};
  (void)gmtime_r(&time, &parts);
  char text[16];
  return {text, std::strftime(text, sizeof text, "%Y-%m-%d", &parts)};
}

}  // namespace

std::int64_t now() {
  return std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch()).count();
}

std::string optionsOf(const std::vector<std::string>& rules) {
  std::string text;
  for (const std::string& rule : rules)
    text += (text.empty() ? "rules=" : ",") + rule;
  return text;
}

// ---- the store -----------------------------------------------------------------------------------------------------

Store::Store(const std::string& path, Mode mode, int patience)
    : connection_(path, mode == Mode::write ? Connection::Mode::write : Connection::Mode::read, patience), mode_(mode) {
  if (mode == Mode::read) {
    requireCurrent(connection_);
  } else {
    migrate(connection_);
    connection_.execute(kForWriting);
  }
}

Store::~Store() {
  // One file again, that can be moved and read anywhere. Where another process has it open, that does it.
  if (mode_ == Mode::write) {
    (void)sqlite3_busy_timeout(connection_.get(), 0);
    (void)sqlite3_exec(connection_.get(), "PRAGMA journal_mode = DELETE", nullptr, nullptr, nullptr);
  }
}

// ---- names ---------------------------------------------------------------------------------------------------------

Names::Names(Connection& connection, const char* table, const char* column)
    : find_(connection, std::string("SELECT id FROM ") + table + " WHERE " + column + " = ?"),
      add_(connection, std::string("INSERT INTO ") + table + "(" + column + ") VALUES(?)") {}

std::int64_t Names::numberOf(const std::string& name) {
  const auto known = known_.find(name);
  if (known != known_.end()) return known->second;
  const bool isThere = find_.with(name).next();
  const std::int64_t number = isThere ? find_.integer(0) : add_.with(name).run();
  find_.reset();
  bound(known_);
  known_.emplace(name, number);
  return number;
}

std::int64_t numberOf(Connection& connection, const Settings& settings) {
  Statement find(connection, "SELECT id FROM settings WHERE tool = ? AND engine = ? AND options = ?");
  if (find.with(settings.tool, settings.engine, settings.options).next()) return find.integer(0);
  return Statement(connection, "INSERT INTO settings(tool, engine, options) VALUES(?, ?, ?)")
      .with(settings.tool, settings.engine, settings.options)
      .run();
}

std::int64_t numberOf(Connection& connection, const Database& database) {
  Statement find(connection, "SELECT id FROM database WHERE sha256 = ?");
  if (find.with(Blob{database.sha256}).next()) return find.integer(0);
  const std::int64_t number = Statement(connection, "INSERT INTO database(sha256, path) VALUES(?, ?)")
                                  .with(Blob{database.sha256}, database.path)
                                  .run();
  Statement add(connection, "INSERT OR IGNORE INTO documented(database_id, name, plugin) VALUES(?, ?, ?)");
  for (const auto& [plugin, name] : database.methods)
    add.with(number, name, plugin).run();
  return number;
}

// ---- results -------------------------------------------------------------------------------------------------------

Results::Results(Connection& connection)
    : connection_(&connection),
      plugins_(connection, "plugin", "name"),
      texts_(connection, "text", "bytes"),
      find_(connection,
            "SELECT id, digest, failure IS NULL, checked, seconds FROM result "
            "WHERE sha256 = ? AND suffix = ? AND settings_id = ?"),
      insert_(
          connection,
          "INSERT INTO result(id, sha256, suffix, settings_id, size, failure, seconds, checked, sources, flash_files, "
          "judged_calls, judged_plugins, calls_without_plugin, digest) "
          "VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
      insertCall_(
          connection,
          "INSERT INTO call(result_id, number, method_id, file_id, line, column, engine_line, found, "
          "confidence, on_device, fingerprint, code_id, reason_id) VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
      insertMissed_(connection, "INSERT INTO missed(result_id, number, part_id, reason_id) VALUES(?, ?, ?, ?)"),
      insertElement_(connection,
                     "INSERT INTO element(result_id, number, plugin_id, symbol_id, file_id) VALUES(?, ?, ?, ?, ?)"),
      insertLibrary_(connection, "INSERT INTO recognised(result_id, number, library_id, file_id) VALUES(?, ?, ?, ?)"),
      conflict_(connection, "INSERT OR IGNORE INTO conflict(sha256, suffix, settings_id, digest) VALUES(?, ?, ?, ?)"),
      findMethod_(connection, "SELECT id FROM method WHERE name = ? AND plugin_id = ?"),
      addMethod_(connection, "INSERT INTO method(name, plugin_id) VALUES(?, ?)"),
      read_(connection,
            "SELECT sha256, suffix, size, failure, seconds, checked, sources, flash_files, judged_calls, "
            "judged_plugins, calls_without_plugin FROM result WHERE id = ?"),
      readCalls_(
          connection,
          "SELECT plugin.name, method.name, file.bytes, line, column, engine_line, found, confidence, on_device, "
          "fingerprint, code.bytes, reason.bytes FROM call JOIN method ON method.id = method_id "
          "JOIN plugin ON plugin.id = plugin_id JOIN text AS file ON file.id = file_id "
          "JOIN text AS code ON code.id = code_id LEFT JOIN text AS reason ON reason.id = reason_id "
          "WHERE result_id = ? ORDER BY number"),
      readMissed_(connection,
                  "SELECT part.bytes, reason.bytes FROM missed JOIN text AS part ON part.id = part_id "
                  "JOIN text AS reason ON reason.id = reason_id WHERE result_id = ? ORDER BY number"),
      readElements_(connection,
                    "SELECT plugin.name, symbol.bytes, file.bytes FROM element JOIN plugin ON plugin.id = plugin_id "
                    "JOIN text AS symbol ON symbol.id = symbol_id JOIN text AS file ON file.id = file_id "
                    "WHERE result_id = ? ORDER BY number"),
      readLibraries_(connection,
                     "SELECT library.bytes, file.bytes FROM recognised JOIN text AS library ON library.id = library_id "
                     "JOIN text AS file ON file.id = file_id WHERE result_id = ? ORDER BY number") {}

std::int64_t Results::find(std::int64_t settings, const std::string& sha256, const std::string& suffix) {
  const std::int64_t number = find_.with(Blob{sha256}, suffix, settings).next() ? find_.integer(0) : 0;
  find_.reset();
  return number;
}

std::int64_t Results::add(std::int64_t settings, const Result& result) {
  const std::string digest = result.digest();
  if (!find_.with(Blob{result.sha256}, result.suffix, settings).next()) {
    find_.reset();
    const std::int64_t number = connection_->integer("SELECT coalesce(max(id), 0) + 1 FROM result");
    insert(number, settings, result, digest);
    return number;
  }
  const std::int64_t number = find_.integer(0);
  const std::string other = find_.bytes(1);
  const bool wasChecked = find_.integer(2) != 0;
  const bool isEarlier = std::pair(result.checked, result.seconds) < std::pair(find_.integer(3), find_.real(4));
  find_.reset();
  if (other == digest) {
    if (isEarlier) {
      Statement(*connection_, "UPDATE result SET checked = ?, seconds = ? WHERE id = ?")
          .with(result.checked, result.seconds, number)
          .run();
    }
    return number;
  }
  const bool isChecked = result.failure.empty();
  const bool isBetter = isChecked != wasChecked ? isChecked : digest < other;
  conflict_.with(Blob{result.sha256}, result.suffix, settings, Blob{isBetter ? other : digest}).run();
  if (isBetter) {
    remove(number);
    insert(number, settings, result, digest);
  }
  return number;
}

void Results::insert(std::int64_t number, std::int64_t settings, const Result& result, const std::string& digest) {
  const std::optional<std::string> failure =
      result.failure.empty() ? std::nullopt : std::optional<std::string>(result.failure);
  insert_
      .with(number, Blob{result.sha256}, result.suffix, settings, result.size, failure, result.seconds, result.checked,
            result.sources, result.flashFiles, result.judgedCalls, result.judgedPlugins, result.hasCallsWithoutPlugin,
            Blob{digest})
      .run();
  insertParts(number, result);
}

void Results::insertParts(std::int64_t number, const Result& result) {
  int row = 0;
  for (const ResultCall& call : result.calls) {
    std::optional<std::int64_t> reason;
    if (!call.reason.empty()) reason = texts_.numberOf(call.reason);
    const std::int64_t method = methodNumber(call.plugin, call.method);
    const std::int64_t file = texts_.numberOf(call.file);
    insertCall_
        .with(number, ++row, method, file, call.place.line, call.place.column, call.engineLine,
              static_cast<int>(call.found), static_cast<int>(call.confidence), call.isOnDevice, call.fingerprint,
              texts_.numberOf(call.code), reason)
        .run();
  }
  row = 0;
  for (const NotChecked& missed : result.notChecked) {
    const std::int64_t part = texts_.numberOf(missed.part);
    insertMissed_.with(number, ++row, part, texts_.numberOf(missed.reason)).run();
  }
  row = 0;
  for (const PluginElement& element : result.elements) {
    const std::int64_t symbol = texts_.numberOf(element.id);
    insertElement_.with(number, ++row, plugins_.numberOf(element.plugin), symbol, texts_.numberOf(element.path)).run();
  }
  row = 0;
  for (const Library& library : result.libraries) {
    const std::int64_t name = texts_.numberOf(library.name);
    insertLibrary_.with(number, ++row, name, texts_.numberOf(library.path)).run();
  }
}

void Results::remove(std::int64_t number) {
  for (const char* table : {"call", "missed", "element", "recognised"})
    Statement(*connection_, std::string("DELETE FROM ") + table + " WHERE result_id = ?").with(number).run();
  Statement(*connection_, "DELETE FROM result WHERE id = ?").with(number).run();
}

std::int64_t Results::methodNumber(const std::string& plugin, const std::string& name) {
  const std::string key = plugin + '\0' + name;
  const auto known = methods_.find(key);
  if (known != methods_.end()) return known->second;
  const std::int64_t pluginNumber = plugins_.numberOf(plugin);
  const bool isThere = findMethod_.with(name, pluginNumber).next();
  const std::int64_t number = isThere ? findMethod_.integer(0) : addMethod_.with(name, pluginNumber).run();
  findMethod_.reset();
  bound(methods_);
  methods_.emplace(key, number);
  return number;
}

Result Results::read(std::int64_t number) {
  Result result;
  if (!read_.with(number).next()) throw StoreError("the store '" + connection_->path() + "': a result is missing");
  result.sha256 = read_.bytes(0);
  result.suffix = read_.bytes(1);
  result.size = static_cast<std::uint64_t>(read_.integer(2));
  result.failure = read_.bytes(3);
  result.seconds = read_.real(4);
  result.checked = read_.integer(5);
  result.sources = static_cast<std::uint64_t>(read_.integer(6));
  result.flashFiles = static_cast<std::uint64_t>(read_.integer(7));
  result.judgedCalls = static_cast<std::uint64_t>(read_.integer(8));
  result.judgedPlugins = static_cast<std::uint64_t>(read_.integer(9));
  result.hasCallsWithoutPlugin = read_.integer(10) != 0;
  read_.reset();
  for (readCalls_.with(number); readCalls_.next();) {
    const auto numberAt = [&](int column) { return static_cast<int>(readCalls_.integer(column)); };
    result.calls.push_back(
        {readCalls_.bytes(0),
         readCalls_.bytes(1),
         readCalls_.bytes(2),
         {numberAt(3), numberAt(4)},
         numberAt(5),
         static_cast<Call::Found>(std::clamp(numberAt(6), 0, static_cast<int>(Call::Found::trial))),
         static_cast<Finding::Confidence>(std::clamp(numberAt(7), 0, static_cast<int>(Finding::Confidence::confirmed))),
         readCalls_.integer(8) != 0,
         static_cast<std::uint64_t>(readCalls_.integer(9)),
         readCalls_.bytes(10),
         readCalls_.bytes(11)});
  }
  for (readMissed_.with(number); readMissed_.next();)
    result.notChecked.push_back({readMissed_.bytes(0), readMissed_.bytes(1)});
  for (readElements_.with(number); readElements_.next();)
    result.elements.push_back({readElements_.bytes(0), readElements_.bytes(1), readElements_.bytes(2)});
  for (readLibraries_.with(number); readLibraries_.next();)
    result.libraries.push_back({readLibraries_.bytes(0), readLibraries_.bytes(1)});
  for (Statement* statement : {&readCalls_, &readMissed_, &readElements_, &readLibraries_})
    statement->reset();
  return result;
}

void Results::forget() {
  plugins_.forget();
  texts_.forget();
  methods_.clear();
}

// ---- runs ----------------------------------------------------------------------------------------------------------

bool KnownContents::contains(const Content& content) const {
  return std::binary_search(keys_.begin(), keys_.end(), keyOf(content.sha256, content.suffix));
}

RunWriter::RunWriter(Store& store, const Settings& settings, const Database& database, const std::string& name)
    : connection_(&store.connection()),
      results_(store.connection()),
      paths_(store.connection(), "path", "name"),
      addApplication_(store.connection(),
                      "INSERT INTO application(path_id, run_id, result_id, failure, checked) VALUES(?, ?, ?, ?, ?) "
                      "ON CONFLICT DO UPDATE SET result_id = excluded.result_id, failure = excluded.failure, "
                      "checked = excluded.checked") {
  Transaction transaction(*connection_);
  settings_ = numberOf(*connection_, settings);
  const std::int64_t databaseNumber = numberOf(*connection_, database);
  Statement find(*connection_,
                 "SELECT id FROM run WHERE settings_id = ? AND database_id = ? AND "
                 "(name = ? OR (? = '' AND finished IS NULL)) ORDER BY id DESC");
  const std::string wanted = name.empty() ? today() : name;
  if (find.with(settings_, databaseNumber, wanted, name).next()) {
    run_ = find.integer(0);
    find.reset();
    Statement(*connection_, "UPDATE run SET finished = NULL WHERE id = ?").with(run_).run();
  } else {
    run_ = Statement(*connection_, "INSERT INTO run(name, settings_id, database_id, started) VALUES(?, ?, ?, ?)")
               .with(wanted, settings_, databaseNumber, now())
               .run();
  }
  transaction.commit();
}

KnownContents RunWriter::knownContents() {
  KnownContents known;
  Statement all(*connection_, "SELECT sha256, suffix FROM result WHERE settings_id = ?");
  for (all.with(settings_); all.next();)
    known.keys_.push_back(keyOf(all.view(0), all.view(1)));
  std::sort(known.keys_.begin(), known.keys_.end());
  return known;
}

std::optional<ApplicationReport> RunWriter::stored(const std::string& path, const std::string& sha256,
                                                   const std::string& suffix, const std::vector<std::string>& rules,
                                                   const Judge& judge) {
  const std::int64_t number = results_.find(settings_, sha256, suffix);
  if (number == 0) return std::nullopt;
  return reportOn(results_.read(number), path, rules, judge);
}

void RunWriter::add(const ApplicationReport& report) {
  try {
    Transaction transaction(*connection_);
    write(report);
    transaction.commit();
  } catch (...) {
    results_.forget();  // numbers that are undone
    paths_.forget();
    throw;
  }
}

void RunWriter::write(const ApplicationReport& report) {
  const std::int64_t path = paths_.numberOf(report.application);
  if (bytesOfHex(report.content).size() != kHashSize) {
    const std::string failure = report.failure.empty() ? "its content cannot be read" : report.failure;
    (void)addApplication_.with(path, run_, nullptr, failure, now()).run();
    return;
  }
  std::int64_t number = 0;
  if (report.isStored) {
    number = results_.find(settings_, bytesOfHex(report.content), report.contentSuffix);
  } else {
    Result result = resultOf(report);
    result.checked = now();
    number = results_.add(settings_, result);
  }
  if (number == 0) throw StoreError("the store '" + connection_->path() + "': a result is missing");
  (void)addApplication_.with(path, run_, number, nullptr, now()).run();
}

void RunWriter::finish() {
  Statement(*connection_, "UPDATE run SET finished = ? WHERE id = ?").with(now(), run_).run();
}

}  // namespace store
