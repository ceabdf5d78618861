#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "store/Content.h"
#include "store/Result.h"
#include "store/Schema.h"
#include "store/Sqlite.h"

// Results of many applications in one file (docs/store.md).
//
//   Store store("catalogue.store", Store::Mode::write);
//   RunWriter run(store, settings, database, "2026-11-21");   // goes on with the run of that name
//   run.add(report); ...                                       // each in a transaction of its own
//   run.finish();
//
// Whatever ends the process, each application is there whole or not at all. All failures throw StoreError.

namespace store {

// What results depend on, beside the content. Other settings, another result.
struct Settings {
  std::string tool;     // version of the checker
  std::string engine;   // version of the engine
  std::string options;  // that change what is found
};

// The `options` of a check by these rules: "rules=engine".
std::string optionsOf(const std::vector<std::string>& rules);

// An API database: what verdicts are made by.
struct Database {
  std::string path;
  std::string sha256;                                        // of the file, 32 bytes
  std::vector<std::pair<std::string, std::string>> methods;  // each with the plug-in that it is documented for
};

class Store {
 public:
  enum class Mode { read, write };

  // To write makes the store if there is none, and brings an older one up to date.
  Store(const std::string& path, Mode mode, int patience = 10'000);
  ~Store();
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;

  Connection& connection() { return connection_; }

 private:
  Connection connection_;
  Mode mode_;
};

// The numbers of names, which are given one when they are new. Keeps those that were asked for last in memory, a
// bounded number of them.
class Names {
 public:
  Names(Connection& connection, const char* table, const char* column);

  std::int64_t numberOf(const std::string& name);

  // To be called when what was added was undone.
  void forget() { known_.clear(); }

 private:
  Statement find_;
  Statement add_;
  std::unordered_map<std::string, std::int64_t> known_;
};

// Writes results and reads them again, by their numbers. What it writes belongs in a transaction.
class Results {
 public:
  explicit Results(Connection& connection);

  // The number of the result of this content with these settings; 0 if there is none.
  std::int64_t find(std::int64_t settings, const std::string& sha256, const std::string& suffix);

  // Adds a result, or finds the one that is there; of equal ones the time of the earlier is kept. Two that differ are
  // told of in the table `conflict`: one that could be checked is kept, else the one with the smaller digest. So their
  // order does not matter.
  std::int64_t add(std::int64_t settings, const Result& result);

  Result read(std::int64_t number);

  void forget();

 private:
  void insert(std::int64_t number, std::int64_t settings, const Result& result, const std::string& digest);
  void insertParts(std::int64_t number, const Result& result);
  void remove(std::int64_t number);
  std::int64_t methodNumber(const std::string& plugin, const std::string& name);

  Connection* connection_;
  Names plugins_;
  Names texts_;
  std::unordered_map<std::string, std::int64_t> methods_;  // by plug-in, NUL and name
  Statement find_, insert_, insertCall_, insertMissed_, insertElement_, insertLibrary_, conflict_;
  Statement findMethod_, addMethod_;
  Statement read_, readCalls_, readMissed_, readElements_, readLibraries_;
};

// The numbers of settings and databases, which are added if they are new. Within a transaction.
std::int64_t numberOf(Connection& connection, const Settings& settings);
std::int64_t numberOf(Connection& connection, const Database& database);

// The contents, by hash and suffix, whose result is known. Cheap to hand to a forked process.
class KnownContents {
 public:
  bool contains(const Content& content) const;
  std::size_t size() const { return keys_.size(); }

 private:
  friend class RunWriter;
  std::vector<std::array<char, 32>> keys_;  // sorted
};

// One run over applications. Only one process writes a run at a time; others that write the store wait for each other.
class RunWriter {
 public:
  // Goes on with the run of this name, settings and database; with an empty name, with the last one of them that was
  // not finished, else one that is called by today's date.
  RunWriter(Store& store, const Settings& settings, const Database& database, const std::string& name);

  KnownContents knownContents();

  // What the store has of this content, for the application at `path`; nothing if it was never checked.
  std::optional<ApplicationReport> stored(const std::string& path, const std::string& sha256, const std::string& suffix,
                                          const std::vector<std::string>& rules, const Judge& judge);

  // Writes a report, in a transaction of its own. One without a content was not checked, and is tried again by the next
  // run; one that came from the store only says that the application is there.
  void add(const ApplicationReport& report);

  // Nothing is left to be done.
  void finish();

 private:
  void write(const ApplicationReport& report);

  Connection* connection_;
  Results results_;
  Names paths_;
  Statement addApplication_;
  std::int64_t settings_ = 0;
  std::int64_t run_ = 0;
};

// Seconds since 1970.
std::int64_t now();

}  // namespace store
