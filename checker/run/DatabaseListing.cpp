// What the engine reads of a database, and what it does not.
//
// The file is read by the engine's own reader and parsed by its parser, so that the listing is what a run would know;
// everything in the parser's tree that the engine passes over becomes a warning. The tree is made twice: once as the
// engine has it, once with white space kept, to see names that are written with blanks around them.
//
// The engine takes what it can get of a damaged file. A fault is what makes that no base for a verdict.
// Test: tests/checker/DatabaseCommand_test.cpp.

#include "checker/run/DatabaseListing.h"

#include <tinyxml.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <initializer_list>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>

#include "APICheckEngine/Facade.h"
#include "APICheckEngine/Tables.h"
#include "checker/options/Suggestion.h"

using FlashEngine_1_00::detail::DatabaseText;
using FlashEngine_1_00::detail::documentedName;
using FlashEngine_1_00::detail::parseDatabase;
using FlashEngine_1_00::detail::readDatabase;

namespace {

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
  const std::string inner = name.substr(begin, name.find_last_not_of('\'') + 1 - begin);
  return inner.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_") ==
         std::string::npos;
}

bool isFunction(const TiXmlNode& node) {
  return node.ToElement() != nullptr && node.ValueStr() == "Function";
}

std::string attributeOf(const TiXmlElement& element, const char* name) {
  const std::string* value = element.Attribute(std::string(name));
  return value == nullptr ? std::string() : trimmed(*value);
}

// The value of `deprecated` is the version since when, or only says yes or no.
void readDeprecation(const TiXmlElement& element, DatabaseFunction& function) {
  if (element.Attribute("deprecated") == nullptr) return;
  const std::string value = attributeOf(element, "deprecated");
  const auto isOneOf = [small = inSmallLetters(value)](std::initializer_list<const char*> words) {
    return std::any_of(words.begin(), words.end(), [&](const char* each) { return small == each; });
  };
  function.isDeprecated = !isOneOf({"false", "no", "0"});
  if (function.isDeprecated && !isOneOf({"", "true", "yes", "1"})) function.deprecatedSince = value;
}

DatabaseFunction functionOf(const TiXmlElement& element, const std::string& name) {
  DatabaseFunction function{name, element.Row()};
  function.since = attributeOf(element, "since");
  function.replacement = attributeOf(element, "replacement");
  readDeprecation(element, function);
  return function;
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

// A database with the parser's tree of it. Throws std::runtime_error with a message for the user.
struct DatabaseTree {
  explicit DatabaseTree(std::FILE* file) {
    if (readDatabase(file, text) == RUN_DB_LOAD_FAILED) throw std::runtime_error("cannot be read as a file");
    if (text.xml != nullptr) root = parseDatabase(text.xml, text.detectsEncoding, document);
  }

  DatabaseText text;
  TiXmlDocument document;
  const TiXmlElement* root = nullptr;
};

FlashEngine_1_00::File opened(const std::string& path) {
  FlashEngine_1_00::File file = FlashEngine_1_00::openFile(path, "r");
  if (file == nullptr) throw std::runtime_error(std::strerror(errno));
  return file;
}

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

// Where the text of a database ends for the engine.
DatabaseFault atEnd(const DatabaseText& text, const std::string& what) {
  const std::string_view read(text.dbBuff == nullptr ? "" : text.dbBuff.get());
  const std::size_t lastLine = read.rfind('\n') + 1;  // 0 if there is none
  return {static_cast<int>(std::count(read.begin(), read.end(), '\n')) + 1,
          static_cast<int>(read.size() - lastLine) + 1, what};
}

// Text, or another element, beside the first one. The parser stops at text between elements and says nothing; so it
// gets the document as the content of an element.
std::optional<DatabaseFault> faultOutsideRoot(const DatabaseText& text) {
  static constexpr const char* kByteOrderMark = "\xEF\xBB\xBF";
  static constexpr const char* kOpening = "<x>";
  std::string xml = text.xml;
  if (xml.compare(0, std::strlen(kByteOrderMark), kByteOrderMark) == 0) xml.erase(0, std::strlen(kByteOrderMark));
  TiXmlDocument whole;
  (void)parseDatabase((kOpening + xml + "</x>").c_str(), text.detectsEncoding, whole);
  const auto at = [](const TiXmlNode& node, const char* what) {
    const int added = node.Row() == 1 ? static_cast<int>(std::strlen(kOpening)) : 0;
    return DatabaseFault{std::max(node.Row(), 1), std::max(node.Column() - added, 1), what};
  };
  const TiXmlElement* document = whole.FirstChildElement();
  const TiXmlElement* root = document == nullptr ? nullptr : document->FirstChildElement();
  if (root == nullptr || whole.Error()) return DatabaseFault{1, 1, "not well-formed"};
  for (const TiXmlNode* node = document->FirstChild(); node != nullptr; node = node->NextSibling()) {
    if (node->ToText() != nullptr) return at(*node, "not well-formed: text outside of the first element");
    if (node->ToElement() != nullptr && node != root) return at(*node, "not well-formed: a second first element");
  }
  return std::nullopt;
}

std::optional<DatabaseFault> faultOf(const DatabaseTree& tree) {
  const auto at = [](const TiXmlNode& node, const std::string& what) {
    return DatabaseFault{std::max(node.Row(), 1), std::max(node.Column(), 1), what};
  };
  const TiXmlDocument& document = tree.document;
  if (tree.text.isTooDeep) return DatabaseFault{1, 1, "its elements nest too deep"};
  if (tree.text.isCut) return atEnd(tree.text, "not well-formed: there is a zero byte");
  if (document.Error()) {
    const std::string what = std::string("not well-formed: ") + document.ErrorDesc();
    if (document.ErrorRow() < 1) return atEnd(tree.text, what);
    return DatabaseFault{document.ErrorRow(), std::max(document.ErrorCol(), 1), what};
  }
  const TiXmlElement* first = document.FirstChildElement();
  if (first == nullptr) return DatabaseFault{1, 1, "there is no element in it"};
  if (auto fault = faultOutsideRoot(tree.text)) return fault;
  if (tree.root == nullptr) return at(*first, "the first element must be 'APIAnalysisDB'");
  for (const TiXmlNode* group = tree.root->FirstChild(); group != nullptr; group = group->NextSibling()) {
    for (const TiXmlNode* node = group->FirstChild(); node != nullptr; node = node->NextSibling()) {
      if (documentedName(*node) != nullptr) return std::nullopt;
    }
  }
  return at(*tree.root, "no method is documented in it");
}

class Reader {
 public:
  Reader(const DatabaseTree& tree, WrittenNames written) : tree_(tree), written_(std::move(written)) {}

  DatabaseListing list() {
    listing_.fault = faultOf(tree_);
    if (tree_.text.isTooDeep) {
      unusable("its elements nest too deep");
    } else if (tree_.root == nullptr && tree_.document.NoChildren() && !tree_.document.Error()) {
      warn(1, "the file is empty: it documents nothing");
    } else {
      readTopLevel();
      checkReplacements();
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
    checkIdentifier(*id, group.line);
  }

  void checkIdentifier(const std::string& id, int line) {
    static const std::vector<std::string> known(FlashEngine_1_00::pluginClassIdTable.begin(),
                                                FlashEngine_1_00::pluginClassIdTable.end());
    if (std::find(known.begin(), known.end(), id) != known.end()) return;
    warn(line, "the engine knows no plug-in with the class identifier " + inQuotes(id) + didYouMean(id, known));
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
    listing_.groups.back().functions.push_back(functionOf(element, name));
    checkAttributes(element, name);
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

  // Attributes are for the reader, but one that is misspelt means nothing to anybody.
  void checkAttributes(const TiXmlElement& element, const std::string& name) {
    static const std::vector<std::string> known{"since", "deprecated", "replacement"};
    for (const TiXmlAttribute* each = element.FirstAttribute(); each != nullptr; each = each->Next()) {
      const std::string attribute = each->Name();
      const bool isKnown = std::find(known.begin(), known.end(), attribute) != known.end();
      const std::string meant = isKnown ? "" : didYouMean(attribute, known);
      if (!meant.empty())
        warn(element.Row(), "attribute " + inQuotes(attribute) + " of " + inQuotes(name) + " says nothing" + meant);
    }
  }

  void checkReplacements() {
    const std::vector<std::string> names = listing_.names();
    const std::set<std::string> documented(names.begin(), names.end());
    for (const DatabaseGroup& group : listing_.groups) {
      for (const DatabaseFunction& function : group.functions) {
        if (function.replacement.empty()) continue;
        const std::string what = inQuotes(function.replacement) + ", which replaces " + inQuotes(function.name);
        if (documented.count(function.replacement) == 0) warn(function.line, what + ", is not documented");
        if (!function.isDeprecated)
          warn(function.line, inQuotes(function.name) + " has a replacement and is not deprecated");
      }
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
  const FlashEngine_1_00::File file = opened(path);
  const DatabaseTree tree(file.get());
  return Reader(tree, writtenNames(file.get())).list();
}

std::optional<DatabaseFault> databaseFault(const std::string& path) {
  return faultOf(DatabaseTree(opened(path).get()));
}
