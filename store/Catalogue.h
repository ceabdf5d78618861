#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "store/Judge.h"

// What a store holds, counted: the tables that `tarvo-check catalogue` shows.

namespace store {

// A name, and how many applications and calls it stands for.
struct Tally {
  std::string name;
  std::uint64_t applications = 0;
  std::uint64_t calls = 0;
};

struct MethodTally {
  std::string plugin;
  std::string name;
  bool isDocumented = false;
  std::uint64_t applications = 0;
  std::uint64_t calls = 0;
};

struct RunTally {
  std::string name;
  std::string tool;
  std::string started;  // "2026-11-21 22:06:32"
  bool isFinished = false;
  std::uint64_t applications = 0;
  std::uint64_t verdicts[4] = {};  // by the database that the catalogue is judged by
};

struct Catalogue {
  std::string database;  // path of the one that verdicts are by
  std::uint64_t applications = 0;
  std::uint64_t calls = 0;
  std::uint64_t verdicts[4] = {};
  std::vector<MethodTally> methods;  // by applications, then by name
  std::vector<Tally> plugins;        // the same
  std::vector<Tally> reasons;        // why parts were not checked; `calls` counts the parts
  std::vector<Tally> failures;       // why applications were not
  std::vector<Tally> libraries;
  std::vector<RunTally> runs;  // in the order in which they began
};

// Each application counts as its last run saw it.
Catalogue catalogueOf(Store& store, const Database& database);

// A call of a method, for whoever asks who uses it.
struct Use {
  std::string application;
  std::string path;  // with that of the application
  Position place;
  std::string plugin;
  std::string method;
  std::string found;
  std::string confidence;
};

// The calls of `method`, on `plugin` if that is not empty; by application, file and place. The plug-in's name may be
// its last word: "TUNER".
std::vector<Use> usesOf(Store& store, const std::string& plugin, const std::string& method);

}  // namespace store
