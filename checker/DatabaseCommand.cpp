// Test: tests/checker/DatabaseCommand_test.cpp.

#include "checker/DatabaseCommand.h"

#include <tinyxml.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>

#include "APICheckEngine/Database.h"
#include "APICheckEngine/DatabaseXml.h"
#include "checker/formats/Text.h"
#include "platform/File.h"

using FlashEngine_1_00::detail::DatabaseText;
using FlashEngine_1_00::detail::documentedName;
using FlashEngine_1_00::detail::parseDatabase;
using FlashEngine_1_00::detail::readDatabase;
using Json = nlohmann::ordered_json;

namespace {

constexpr int kDone = 0;
constexpr int kDiffers = 1;  // or there are warnings
constexpr int kFailed = 2;

constexpr std::size_t kMaxShown = 80;  // bytes of a text from the file in a warning
constexpr const char* kBlanks = " \t\n\v\f\r";
constexpr const char* kNotRead = " not read by the engine: ";

std::string inQuotes(const std::string& text) {
  return "'" + (text.size() <= kMaxShown ? text : text.substr(0, kMaxShown) + "...") + "'";
}

std::string trimmed(const std::string& text) {
  const std::size_t begin = text.find_first_not_of(kBlanks);
  return begin == std::string::npos ? "" : text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

std::string inSmallLetters(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

// Whether a call can have this method: a word, or that in the single quotes that a call on the extension plug-in keeps.
bool canBeCalled(const std::string& name) {
  const std::size_t begin = name.find_first_not_of('\'');
  if (begin == std::string::npos) return false;
  const std::string word = name.substr(begin, name.find_last_not_of('\'') + 1 - begin);
  return word.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_") == std::string::npos;
}

bool isFunction(const TiXmlNode& node) {
  return node.ToElement() != nullptr && node.ValueStr() == "Function";
}

// The node after `node` in the document, of those below `top`; null after the last one.
const TiXmlNode* nextBelow(const TiXmlNode& top, const TiXmlNode* node) {
  if (node->FirstChild() != nullptr) return node->FirstChild();
  while (node != &top && node->NextSibling() == nullptr)
    node = node->Parent();
  return node == &top ? nullptr : node->NextSibling();
}

// The parser as it is made to keep white space, which it else folds into one blank and drops at the ends.
class KeptWhiteSpace {
 public:
  KeptWhiteSpace() { TiXmlBase::SetCondenseWhiteSpace(false); }
  ~KeptWhiteSpace() { TiXmlBase::SetCondenseWhiteSpace(true); }
  KeptWhiteSpace(const KeptWhiteSpace&) = delete;
  KeptWhiteSpace& operator=(const KeptWhiteSpace&) = delete;
};

// A database with the parser's tree of it.
struct DatabaseTree {
  explicit DatabaseTree(std::FILE* file) : code(readDatabase(file, text)) {
    if (text.xml != nullptr) root = parseDatabase(text.xml, text.detectsEncoding, document);
  }

  DatabaseText text;
  RunResult code;  // of its reader
  TiXmlDocument document;
  const TiXmlElement* root = nullptr;
};

// The names as they stand in the file, by line and column of their elements.
using WrittenNames = std::map<std::pair<int, int>, std::string>;

WrittenNames writtenNames(std::FILE* file) {
  WrittenNames names;
  const KeptWhiteSpace kept;
  const DatabaseTree tree(file);
  if (tree.root == nullptr) return names;
  for (const TiXmlNode* node = tree.root; node != nullptr; node = nextBelow(*tree.root, node)) {
    const char* name = documentedName(*node);
    if (name != nullptr) names.emplace(std::pair(node->Row(), node->Column()), name);
  }
  return names;
}

class Reader {
 public:
  Reader(const DatabaseTree& tree, WrittenNames written) : tree_(tree), written_(std::move(written)) {}

  DatabaseListing list() {
    if (tree_.text.isTooDeep) {
      unusable("its elements nest too deep");
    } else if (tree_.root == nullptr && tree_.document.NoChildren() && !tree_.document.Error()) {
      warn(1, "the file is empty: it documents nothing");
    } else {
      readTopLevel();
    }
    if (tree_.document.Error()) {
      warn(tree_.document.ErrorRow(),
           std::string("what follows is") + kNotRead + "the XML is damaged here: " + tree_.document.ErrorDesc());
    }
    if (tree_.text.isCut)
      warn(1, std::string("what stands behind its first zero byte is") + kNotRead + "the text ends there");
    std::stable_sort(listing_.warnings.begin(), listing_.warnings.end(),
                     [](const DatabaseWarning& a, const DatabaseWarning& b) { return a.line < b.line; });
    return std::move(listing_);
  }

 private:
  void warn(int line, const std::string& text) { listing_.warnings.push_back({std::max(line, 1), text}); }
  void warnNotRead(const TiXmlNode& node, const std::string& what, const std::string& why) {
    warn(node.Row(), what + " is" + kNotRead + why);
  }

  void unusable(const std::string& why) {
    listing_.isRead = false;
    warn(1, "the file is" + std::string(kNotRead) + why);
  }

  void readTopLevel() {
    if (tree_.root == nullptr) unusable("it has no element 'APIAnalysisDB' on its first level");
    for (const TiXmlNode* node = tree_.document.FirstChild(); node != nullptr; node = node->NextSibling()) {
      if (node == tree_.root) {
        readRoot();
      } else if (node->ToElement() != nullptr) {
        warnNotRead(*node, "element " + inQuotes(node->ValueStr()),
                    "only the first 'APIAnalysisDB' is, and that in this spelling");
      }
    }
  }

  void readRoot() {
    for (const TiXmlNode* node = tree_.root->FirstChild(); node != nullptr; node = node->NextSibling()) {
      if (node->ToElement() != nullptr) {
        readGroup(*node->ToElement());
      } else if (node->ToText() != nullptr) {
        warnText(*node);
      }
    }
  }

  void readGroup(const TiXmlElement& element) {
    const std::string* id = element.Attribute(std::string("classid"));
    listing_.groups.push_back({id == nullptr ? element.ValueStr() : *id, element.Row(), {}});
    const DatabaseGroup& group = listing_.groups.back();
    inGroup_.clear();
    const bool isOutside = isFunction(element) && element.GetText() != nullptr;
    for (const TiXmlNode* node = element.FirstChild(); node != nullptr; node = node->NextSibling()) {
      if (isFunction(*node)) {
        readFunction(*node->ToElement());
      } else if (node->ToElement() != nullptr) {
        const bool isSpelling = inSmallLetters(node->ValueStr()) == "function";
        warnNotRead(*node, "element " + inQuotes(node->ValueStr()),
                    isSpelling ? "it is to be spelled 'Function'" : "only 'Function' elements are");
        warnOfDeepFunctions(*node);
      } else if (node->ToText() != nullptr && !isOutside) {
        warnText(*node);
      }
    }
    if (isOutside) {
      warnNotRead(element, inQuotes(element.GetText()), "its Function stands outside a group");
      if (group.functions.empty()) listing_.groups.pop_back();
      return;
    }
    if (group.functions.empty()) warn(group.line, "group " + inQuotes(group.name) + " documents no function");
    if (id == nullptr) return;
    const auto [first, isNew] = groups_.emplace(*id, group.line);
    if (!isNew)
      warn(group.line, "group " + inQuotes(*id) + " stands in line " + std::to_string(first->second) + ", too");
  }

  void readFunction(const TiXmlElement& element) {
    warnOfDeepFunctions(element);
    const char* text = documentedName(element);
    if (text == nullptr) {
      return warnNotRead(element, "a Function",
                         element.NoChildren() ? "it has no text" : "its text is not the first thing in it");
    }
    const std::string name = text;
    const int line = element.Row();
    listing_.groups.back().functions.push_back({name, line});
    for (const TiXmlNode* rest = element.FirstChild()->NextSibling(); rest != nullptr; rest = rest->NextSibling()) {
      if (rest->ToText() != nullptr)
        warnNotRead(*rest, "text " + inQuotes(rest->ValueStr()), "of a Function only the first text is");
      if (rest->ToElement() != nullptr && !isFunction(*rest))
        warnNotRead(*rest, "element " + inQuotes(rest->ValueStr()), "it stands in a Function");
    }
    checkName(element, name);
    const auto [first, isNew] = inGroup_.emplace(name, line);
    if (!isNew) warn(line, inQuotes(name) + " stands in line " + std::to_string(first->second) + " of the group, too");
    const auto [alike, isFirst] = spellings_.try_emplace(inSmallLetters(name), DatabaseFunction{name, line});
    if (!isFirst && alike->second.name != name) {
      warn(line, inQuotes(name) + " differs only in case from " + inQuotes(alike->second.name) + " in line " +
                     std::to_string(alike->second.line) + ": a call must have the very letters");
    }
  }

  void checkName(const TiXmlElement& element, const std::string& name) {
    const auto written = written_.find({element.Row(), element.Column()});
    if (trimmed(name) != name) {
      warn(element.Row(), "the name " + inQuotes(name) + " has blanks around it: no call has such a method");
    } else if (!canBeCalled(name)) {
      warn(element.Row(),
           inQuotes(name) + " has characters that the method of a call cannot have: letters, digits, '_'");
    } else if (written != written_.end() && written->second != name) {
      warnNotRead(element, "white space around " + inQuotes(name), "write the name without any");
    }
  }

  void warnText(const TiXmlNode& node) {
    warnNotRead(node, "text " + inQuotes(node.ValueStr()), "it stands between the elements");
  }

  void warnOfDeepFunctions(const TiXmlNode& top) {
    for (const TiXmlNode* node = nextBelow(top, &top); node != nullptr; node = nextBelow(top, node)) {
      if (!isFunction(*node)) continue;
      const char* name = documentedName(*node);
      warnNotRead(*node, name == nullptr ? "a Function" : inQuotes(name), "its Function stands too deep");
    }
  }

  const DatabaseTree& tree_;
  WrittenNames written_;
  DatabaseListing listing_;
  std::map<std::string, int> groups_;                  // first lines, by class identifier
  std::map<std::string, int> inGroup_;                 // first lines in the group that is read, by name
  std::map<std::string, DatabaseFunction> spellings_;  // first ones, by the name in small letters
};

Json jsonOf(const std::vector<DatabaseWarning>& warnings) {
  Json list = Json::array();
  for (const DatabaseWarning& warning : warnings)
    list.push_back({{"line", warning.line}, {"text", warning.text}});
  return list;
}

void print(const Json& json, std::ostream& out) {
  out << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

void print(const std::string& path, const std::vector<DatabaseWarning>& warnings, std::ostream& err) {
  for (const DatabaseWarning& warning : warnings)
    err << printable(path + ":" + std::to_string(warning.line) + ": warning: " + warning.text) << '\n';
}

void printFailure(const std::string& text, std::ostream& err) {
  err << "tarvo-check: " << printable(text) << '\n';
}

// The listing of a file that the engine can use; if it cannot, says why and gives none.
bool getListing(const std::string& path, DatabaseListing& listing, std::ostream& err) {
  try {
    listing = listDatabase(path);
  } catch (const std::runtime_error& error) {
    printFailure(path + ": " + error.what(), err);
    return false;
  }
  if (listing.isRead) return true;
  print(path, listing.warnings, err);
  printFailure(path + ": the engine cannot use it", err);
  return false;
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

std::vector<std::string> DatabaseListing::names() const {
  std::vector<std::string> names;
  for (const DatabaseGroup& group : groups) {
    for (const DatabaseFunction& function : group.functions)
      names.push_back(function.name);
  }
  return names;
}

DatabaseListing listDatabase(const std::string& path) {
  errno = 0;
  const FlashEngine_1_00::File file = FlashEngine_1_00::openFile(path, "r");
  const int error = errno;
  const DatabaseTree tree(file.get());
  if (tree.code == RUN_DB_LOAD_FAILED)
    throw std::runtime_error(file == nullptr ? std::strerror(error) : "cannot be read as a file");
  return Reader(tree, writtenNames(file.get())).list();
}

int printDatabase(const std::string& path, bool json, std::ostream& out, std::ostream& err) {
  DatabaseListing listing;
  if (!getListing(path, listing, err)) return kFailed;
  const std::vector<std::string> names = listing.names();
  if (json) {
    Json groups = Json::array();
    for (const DatabaseGroup& group : listing.groups) {
      Json functions = Json::array();
      for (const DatabaseFunction& function : group.functions)
        functions.push_back({{"name", function.name}, {"line", function.line}});
      groups.push_back({{"name", group.name}, {"line", group.line}, {"functions", functions}});
    }
    print(Json{{"version", 1},
               {"database", path},
               {"groups", groups},
               {"names", std::set<std::string>(names.begin(), names.end())},
               {"warnings", jsonOf(listing.warnings)}},
          out);
  } else {
    for (const DatabaseGroup& group : listing.groups) {
      out << printable(group.name) << '\n';
      for (const DatabaseFunction& function : group.functions)
        out << "  " << printable(function.name) << '\n';
    }
    out << "groups: " << listing.groups.size() << ", functions: " << names.size()
        << ", different names: " << distinct(names) << "; each is documented for all plug-ins\n";
    print(path, listing.warnings, err);
  }
  return listing.warnings.empty() ? kDone : kDiffers;
}

int printDatabaseDiff(const std::string& older, const std::string& newer, bool json, std::ostream& out,
                      std::ostream& err) {
  DatabaseListing before;
  DatabaseListing after;
  const bool isRead = getListing(older, before, err);
  if (!getListing(newer, after, err) || !isRead) return kFailed;
  const Change all(flat(before), flat(after));
  const std::map<std::string, Change> groups = changedGroups(before, after);
  if (json) {
    Json list = Json::array();
    for (const auto& [name, change] : groups) {
      Json group{{"name", name}};
      group.update(change.json());
      list.push_back(group);
    }
    Json report{{"version", 1}, {"old", older}, {"new", newer}};
    report.update(all.json());
    report["groups"] = list;
    print(report, out);
  } else {
    print(all, groups, out);
  }
  return groups.empty() ? kDone : kDiffers;
}
