// The database commands: the listing of a database (run/DatabaseListing) for people and as JSON, and what changed
// between two. Test: tests/checker/DatabaseCommand_test.cpp.

#include "checker/commands/DatabaseCommand.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>

#include "checker/commands/StandardStreams.h"
#include "checker/options/ExitStatus.h"
#include "checker/options/UserError.h"
#include "checker/report/Characters.h"

using Json = nlohmann::ordered_json;

namespace {

Json jsonOf(const std::vector<DatabaseWarning>& warnings) {
  Json list = Json::array();
  for (const DatabaseWarning& warning : warnings)
    list.push_back({{"line", warning.line}, {"text", warning.text}});
  return list;
}

void print(const Json& json, std::ostream& out) {
  out << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

void print(const std::string& path, const std::vector<DatabaseWarning>& warnings) {
  for (const DatabaseWarning& warning : warnings)
    std::cerr << printable(path + ":" + std::to_string(warning.line) + ": warning: " + warning.text) << '\n';
}

void printFailure(const std::string& text) {
  std::cerr << "tarvo-check: " << printable(text) << '\n';
}

std::string textOf(const std::string& path, const DatabaseFault& fault) {
  return "the database cannot be used: " + path + ":" + std::to_string(fault.line) + ":" +
         std::to_string(fault.column) + ": " + fault.text;
}

// The listing of a sound file. Of another one, says what is wrong and gives false.
bool getListing(const std::string& path, DatabaseListing& listing) {
  try {
    listing = listDatabase(path);
  } catch (const std::runtime_error& error) {
    printFailure(path + ": " + error.what());
    return false;
  }
  if (!listing.fault) return true;
  print(path, listing.warnings);
  printFailure(textOf(path, *listing.fault));
  return false;
}

// "since 2.0, deprecated since 4.0: call 'GetLevel'"; empty if the database says nothing of it.
std::string remarksOn(const DatabaseFunction& function) {
  std::string text;
  if (!function.since.empty()) text = "since " + function.since;
  if (function.isDeprecated) {
    text += text.empty() ? "deprecated" : ", deprecated";
    if (!function.deprecatedSince.empty()) text += " since " + function.deprecatedSince;
  }
  if (!function.replacement.empty()) text += ": call '" + function.replacement + "'";
  return text;
}

Json jsonOf(const DatabaseFunction& function) {
  Json json{{"name", function.name}, {"line", function.line}};
  if (!function.since.empty()) json["since"] = function.since;
  if (function.isDeprecated) json["deprecated"] = true;
  if (!function.deprecatedSince.empty()) json["deprecatedSince"] = function.deprecatedSince;
  if (!function.replacement.empty()) json["replacement"] = function.replacement;
  return json;
}

void print(const std::vector<DatabaseGroup>& groups, std::ostream& out) {
  for (const DatabaseGroup& group : groups) {
    out << printable(group.name) << '\n';
    for (const DatabaseFunction& function : group.functions) {
      const std::string remarks = remarksOn(function);
      out << "  " << printable(function.name + (remarks.empty() ? "" : "  (" + remarks + ")")) << '\n';
    }
  }
}

std::size_t deprecatedIn(const std::vector<DatabaseGroup>& groups) {
  std::size_t count = 0;
  for (const DatabaseGroup& group : groups) {
    count += static_cast<std::size_t>(std::count_if(group.functions.begin(), group.functions.end(),
                                                    [](const auto& function) { return function.isDeprecated; }));
  }
  return count;
}

std::size_t distinct(const std::vector<std::string>& names) {
  return std::set<std::string>(names.begin(), names.end()).size();
}

// What is in one list of names and not in the other.
struct Change {
  std::set<std::string> documented;
  std::set<std::string> undocumented;

  Change(const std::set<std::string>& older, const std::set<std::string>& newer) {
    std::set_difference(newer.begin(), newer.end(), older.begin(), older.end(),
                        std::inserter(documented, documented.end()));
    std::set_difference(older.begin(), older.end(), newer.begin(), newer.end(),
                        std::inserter(undocumented, undocumented.end()));
  }

  bool isNone() const { return documented.empty() && undocumented.empty(); }
  Json json() const { return {{"documented", documented}, {"undocumented", undocumented}}; }
};

using NamesByGroup = std::map<std::string, std::set<std::string>>;

NamesByGroup byGroup(const DatabaseListing& listing) {
  NamesByGroup names;
  for (const DatabaseGroup& group : listing.groups) {
    for (const DatabaseFunction& function : group.functions)
      names[group.name].insert(function.name);
  }
  return names;
}

std::set<std::string> flat(const DatabaseListing& listing) {
  const std::vector<std::string> names = listing.names();
  return {names.begin(), names.end()};
}

// By group; only those that changed.
std::map<std::string, Change> changedGroups(const DatabaseListing& older, const DatabaseListing& newer) {
  NamesByGroup before = byGroup(older);
  NamesByGroup after = byGroup(newer);
  for (const auto& [group, names] : before)
    after.try_emplace(group);
  std::map<std::string, Change> changes;
  for (const auto& [group, names] : after) {
    const Change change(before[group], names);
    if (!change.isNone()) changes.emplace(group, change);
  }
  return changes;
}

void print(const Change& all, const std::map<std::string, Change>& groups, std::ostream& out) {
  for (const std::string& name : all.documented)
    out << printable("documented: " + name) << '\n';
  for (const std::string& name : all.undocumented)
    out << printable("no longer documented: " + name) << '\n';
  for (const auto& [group, change] : groups) {
    out << printable(group) << ":\n";
    for (const std::string& name : change.documented) {
      const bool isNew = all.documented.count(name) > 0;
      out << printable("  + " + name) << (isNew ? "\n" : "  (was documented by another group)\n");
    }
    for (const std::string& name : change.undocumented) {
      const bool isGone = all.undocumented.count(name) > 0;
      out << printable("  - " + name) << (isGone ? "\n" : "  (still documented by another group)\n");
    }
  }
}

}  // namespace

void requireSoundDatabase(const Options& options) {
  requireDatabase(options);
  std::optional<DatabaseFault> fault;
  try {
    fault = databaseFault(options.database);
  } catch (const std::runtime_error& error) {
    throw UserError("the database '" + options.database + "' cannot be read: " + error.what());
  }
  if (fault) throw UserError(textOf(options.database, *fault));
}

int databaseCommand(const Options& options) {
  requireDatabase(options);
  const std::string& path = options.database;
  DatabaseListing listing;
  if (!getListing(path, listing)) return kFailed;
  const std::vector<std::string> names = listing.names();
  if (options.json) {
    Json groups = Json::array();
    for (const DatabaseGroup& group : listing.groups) {
      Json functions = Json::array();
      for (const DatabaseFunction& function : group.functions)
        functions.push_back(jsonOf(function));
      groups.push_back({{"name", group.name}, {"line", group.line}, {"functions", functions}});
    }
    print(Json{{"version", 1},
               {"database", path},
               {"groups", groups},
               {"names", std::set<std::string>(names.begin(), names.end())},
               {"warnings", jsonOf(listing.warnings)}},
          std::cout);
  } else {
    print(listing.groups, std::cout);
    const std::size_t deprecated = deprecatedIn(listing.groups);
    std::cout << "groups: " << listing.groups.size() << ", functions: " << names.size()
              << ", different names: " << distinct(names) << "; each is documented for all plug-ins\n";
    if (deprecated > 0) std::cout << "deprecated: " << deprecated << '\n';
    print(path, listing.warnings);
  }
  return printedWith(listing.warnings.empty() ? kDone : kDiffers);
}

int databaseDiffCommand(const Options& options) {
  const std::string& older = options.older;
  const std::string& newer = options.newer;
  DatabaseListing before;
  DatabaseListing after;
  const bool isSound = getListing(older, before);
  if (!getListing(newer, after) || !isSound) return kFailed;
  const Change all(flat(before), flat(after));
  const std::map<std::string, Change> groups = changedGroups(before, after);
  if (options.json) {
    Json list = Json::array();
    for (const auto& [name, change] : groups) {
      Json group{{"name", name}};
      group.update(change.json());
      list.push_back(group);
    }
    Json report{{"version", 1}, {"old", older}, {"new", newer}};
    report.update(all.json());
    report["groups"] = list;
    print(report, std::cout);
  } else {
    print(all, groups, std::cout);
  }
  return printedWith(groups.empty() ? kDone : kDiffers);
}
