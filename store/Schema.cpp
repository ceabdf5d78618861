// The statements that make each version of the schema of the one before, and the views. A step is never changed after a
// release; a change is another step.
// Test: tests/store/Store_test.cpp.

#include "store/Schema.h"

#include <string>

namespace store {
namespace {

// Rows are narrow: names stand once and rows have their numbers; a call takes some 25 bytes, and its entry in the index
// that answers "who uses this method" some 8.
constexpr const char* kVersion1 = R"(
CREATE TABLE plugin(id INTEGER PRIMARY KEY, name NOT NULL UNIQUE);
CREATE TABLE method(id INTEGER PRIMARY KEY, plugin_id INTEGER NOT NULL REFERENCES plugin, name NOT NULL,
                    UNIQUE(name, plugin_id));
CREATE TABLE text(id INTEGER PRIMARY KEY, bytes NOT NULL UNIQUE);
CREATE TABLE path(id INTEGER PRIMARY KEY, name NOT NULL UNIQUE);

CREATE TABLE settings(id INTEGER PRIMARY KEY, tool TEXT NOT NULL, engine TEXT NOT NULL, options TEXT NOT NULL,
                      UNIQUE(tool, engine, options));
CREATE TABLE database(id INTEGER PRIMARY KEY, sha256 BLOB NOT NULL UNIQUE, path NOT NULL);
CREATE TABLE documented(database_id INTEGER NOT NULL REFERENCES database, name NOT NULL, plugin NOT NULL,
                        PRIMARY KEY(database_id, name, plugin)) WITHOUT ROWID;

CREATE TABLE run(id INTEGER PRIMARY KEY, name TEXT NOT NULL, settings_id INTEGER NOT NULL REFERENCES settings,
                 database_id INTEGER NOT NULL REFERENCES database, started INTEGER NOT NULL, finished INTEGER,
                 UNIQUE(name, settings_id, database_id));

-- What came out for some bytes. A file's suffix decides on how it is read.
CREATE TABLE result(id INTEGER PRIMARY KEY, sha256 BLOB NOT NULL, suffix NOT NULL,
                    settings_id INTEGER NOT NULL REFERENCES settings, size INTEGER NOT NULL, failure,
                    seconds REAL NOT NULL, checked INTEGER NOT NULL, sources INTEGER NOT NULL,
                    flash_files INTEGER NOT NULL, judged_calls INTEGER NOT NULL, judged_plugins INTEGER NOT NULL,
                    calls_without_plugin INTEGER NOT NULL, digest BLOB NOT NULL,
                    UNIQUE(sha256, suffix, settings_id));
CREATE TABLE call(result_id INTEGER NOT NULL REFERENCES result, number INTEGER NOT NULL,
                  method_id INTEGER NOT NULL REFERENCES method, file_id INTEGER NOT NULL REFERENCES text,
                  line INTEGER NOT NULL, column INTEGER NOT NULL, engine_line INTEGER NOT NULL,
                  found INTEGER NOT NULL, confidence INTEGER NOT NULL, on_device INTEGER NOT NULL,
                  fingerprint INTEGER NOT NULL, code_id INTEGER NOT NULL REFERENCES text,
                  reason_id INTEGER REFERENCES text,
                  PRIMARY KEY(result_id, number)) WITHOUT ROWID;
CREATE INDEX call_by_method ON call(method_id, result_id);
CREATE TABLE missed(result_id INTEGER NOT NULL REFERENCES result, number INTEGER NOT NULL,
                    part_id INTEGER NOT NULL REFERENCES text, reason_id INTEGER NOT NULL REFERENCES text,
                    PRIMARY KEY(result_id, number)) WITHOUT ROWID;
CREATE TABLE element(result_id INTEGER NOT NULL REFERENCES result, number INTEGER NOT NULL,
                     plugin_id INTEGER NOT NULL REFERENCES plugin, symbol_id INTEGER NOT NULL REFERENCES text,
                     file_id INTEGER NOT NULL REFERENCES text, PRIMARY KEY(result_id, number)) WITHOUT ROWID;
CREATE TABLE recognised(result_id INTEGER NOT NULL REFERENCES result, number INTEGER NOT NULL,
                        library_id INTEGER NOT NULL REFERENCES text, file_id INTEGER NOT NULL REFERENCES text,
                        PRIMARY KEY(result_id, number)) WITHOUT ROWID;

-- What a run found at a path: a result, or why nothing could be found out.
CREATE TABLE application(path_id INTEGER NOT NULL REFERENCES path, run_id INTEGER NOT NULL REFERENCES run,
                         result_id INTEGER REFERENCES result, failure, checked INTEGER NOT NULL,
                         PRIMARY KEY(path_id, run_id)) WITHOUT ROWID;
CREATE INDEX application_by_run ON application(run_id, result_id);
CREATE INDEX application_by_result ON application(result_id);

-- Results of the same bytes with the same settings that differ from the one that was kept.
CREATE TABLE conflict(sha256 BLOB NOT NULL, suffix NOT NULL, settings_id INTEGER NOT NULL REFERENCES settings,
                      digest BLOB NOT NULL, PRIMARY KEY(sha256, suffix, settings_id, digest)) WITHOUT ROWID;
)";

// The names of numbers are those of the reports. `latest` holds one row for each path, from its last run.
constexpr const char* kViews = R"(
DROP VIEW IF EXISTS applications;
DROP VIEW IF EXISTS calls;
DROP VIEW IF EXISTS parts_not_checked;
DROP VIEW IF EXISTS elements;
DROP VIEW IF EXISTS libraries;
DROP VIEW IF EXISTS runs;
DROP VIEW IF EXISTS conflicts;
DROP VIEW IF EXISTS latest;

CREATE VIEW latest AS
SELECT path_id, max(run_id) AS run_id, result_id, failure, checked FROM application GROUP BY path_id;

CREATE VIEW calls AS
SELECT path.name AS application, plugin.name AS plugin, method.name AS method, file.bytes AS file, call.line,
       call.column, call.engine_line,
       CASE call.found WHEN 0 THEN 'variable' WHEN 1 THEN 'look-up' WHEN 2 THEN 'flash-variable'
                       WHEN 3 THEN 'flash-look-up' WHEN 4 THEN 'flow' ELSE 'trial' END AS found,
       CASE call.confidence WHEN 0 THEN 'possible' WHEN 1 THEN 'likely' WHEN 2 THEN 'certain'
                            ELSE 'confirmed' END AS confidence,
       call.on_device, printf('%016x', call.fingerprint) AS fingerprint, code.bytes AS code, reason.bytes AS reason,
       CASE WHEN call.reason_id IS NULL THEN EXISTS(
         SELECT 1 FROM documented WHERE documented.database_id = run.database_id AND documented.name = method.name)
       END AS documented
FROM latest JOIN run ON run.id = latest.run_id JOIN path ON path.id = latest.path_id
     JOIN call ON call.result_id = latest.result_id JOIN method ON method.id = call.method_id
     JOIN plugin ON plugin.id = method.plugin_id JOIN text AS file ON file.id = call.file_id
     JOIN text AS code ON code.id = call.code_id LEFT JOIN text AS reason ON reason.id = call.reason_id;

CREATE VIEW applications AS
SELECT application, sha256, size,
       CASE WHEN failure IS NOT NULL THEN 'could not check' WHEN findings > 0 THEN 'findings'
            WHEN parts_not_checked > 0 THEN 'incomplete' ELSE 'clean' END AS verdict,
       findings, calls, parts_not_checked, failure, seconds, checked, run, tool, engine, options, database
FROM (SELECT path.name AS application, lower(hex(result.sha256)) AS sha256, result.size,
             (SELECT count(*) FROM call JOIN method ON method.id = call.method_id
              WHERE call.result_id = latest.result_id AND call.reason_id IS NULL AND call.confidence > 0
                    AND NOT EXISTS(SELECT 1 FROM documented WHERE documented.database_id = run.database_id
                                                                  AND documented.name = method.name)) AS findings,
             (SELECT count(*) FROM call WHERE call.result_id = latest.result_id) AS calls,
             (SELECT count(*) FROM missed WHERE missed.result_id = latest.result_id) AS parts_not_checked,
             coalesce(latest.failure, result.failure) AS failure, result.seconds,
             datetime(latest.checked, 'unixepoch') AS checked, run.name AS run, settings.tool, settings.engine,
             settings.options, database.path AS database
      FROM latest JOIN path ON path.id = latest.path_id JOIN run ON run.id = latest.run_id
           JOIN settings ON settings.id = run.settings_id JOIN database ON database.id = run.database_id
           LEFT JOIN result ON result.id = latest.result_id);

CREATE VIEW parts_not_checked AS
SELECT path.name AS application, part.bytes AS part, reason.bytes AS reason
FROM latest JOIN path ON path.id = latest.path_id JOIN missed ON missed.result_id = latest.result_id
     JOIN text AS part ON part.id = missed.part_id JOIN text AS reason ON reason.id = missed.reason_id;

CREATE VIEW elements AS
SELECT path.name AS application, plugin.name AS plugin, symbol.bytes AS symbol, file.bytes AS file
FROM latest JOIN path ON path.id = latest.path_id JOIN element ON element.result_id = latest.result_id
     JOIN plugin ON plugin.id = element.plugin_id JOIN text AS symbol ON symbol.id = element.symbol_id
     JOIN text AS file ON file.id = element.file_id;

CREATE VIEW libraries AS
SELECT path.name AS application, library.bytes AS library, file.bytes AS file
FROM latest JOIN path ON path.id = latest.path_id JOIN recognised ON recognised.result_id = latest.result_id
     JOIN text AS library ON library.id = recognised.library_id JOIN text AS file ON file.id = recognised.file_id;

CREATE VIEW runs AS
SELECT run.name AS run, settings.tool, settings.engine, settings.options, database.path AS database,
       lower(hex(database.sha256)) AS database_sha256, datetime(run.started, 'unixepoch') AS started,
       datetime(run.finished, 'unixepoch') AS finished,
       (SELECT count(*) FROM application WHERE application.run_id = run.id) AS applications
FROM run JOIN settings ON settings.id = run.settings_id JOIN database ON database.id = run.database_id;

CREATE VIEW conflicts AS
SELECT lower(hex(conflict.sha256)) AS sha256, conflict.suffix, settings.tool, settings.options,
       count(*) AS other_results
FROM conflict JOIN settings ON settings.id = conflict.settings_id GROUP BY conflict.sha256, conflict.suffix, settings.id;
)";

[[noreturn]] void refuse(const Connection& connection, const std::string& why) {
  throw StoreError("'" + connection.path() + "' " + why);
}

// Of a store, 0 of an empty file.
int versionOf(Connection& connection, std::size_t newest) {
  const bool isStore = connection.integer("PRAGMA application_id") == kApplicationId;
  if (!isStore && connection.integer("SELECT count(*) FROM sqlite_schema") > 0)
    refuse(connection, "is a database of another program, not a store");
  const std::int64_t version = isStore ? connection.integer("PRAGMA user_version") : 0;
  if (version > static_cast<std::int64_t>(newest)) {
    refuse(connection, "is a store of version " + std::to_string(version) +
                           ", which a newer tarvo-check wrote; this one knows version " + std::to_string(newest));
  }
  return static_cast<int>(version);
}

}  // namespace

const std::vector<const char*>& schemaSteps() {
  static const std::vector<const char*> kSteps{kVersion1};
  return kSteps;
}

void migrate(Connection& connection, const std::vector<const char*>& steps) {
  Transaction transaction(connection);  // nobody else migrates it meanwhile
  const auto version = static_cast<std::size_t>(versionOf(connection, steps.size()));
  for (std::size_t i = version; i < steps.size(); ++i)
    connection.execute(steps[i]);
  if (version < steps.size()) {
    connection.execute(kViews);
    connection.execute("PRAGMA application_id = " + std::to_string(kApplicationId));
    connection.execute("PRAGMA user_version = " + std::to_string(steps.size()));
  }
  transaction.commit();
}

void requireCurrent(Connection& connection) {
  const auto newest = schemaSteps().size();
  const auto version = static_cast<std::size_t>(versionOf(connection, newest));
  if (version == 0) refuse(connection, "is empty, not a store");
  if (version < newest) {
    refuse(connection, "is a store of version " + std::to_string(version) + "; 'tarvo-check merge " +
                           connection.path() + "' brings it to version " + std::to_string(newest));
  }
}

}  // namespace store
