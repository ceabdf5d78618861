// Object discovery: the plug-in elements of the application, and the names under which script reaches them.
//
// An element's text names the plug-in, its id is the first symbol; where a call passes that id as an argument, the
// called function's parameter is a further symbol. Reads worthfulSourceList and functionBlockList; fills objectTagList,
// objectClassList and objectIdList. Test: tests/APICheckEngine/ObjectDiscovery_test.cpp.

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/Keys.h"
#include "APICheckEngine/Knowledge.h"
#include "APICheckEngine/Tables.h"
#include "platform/Log.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00 {
namespace {

using detail::makeKey;
using detail::splitKey;
using detail::without;
using detail::withoutBlanks;

constexpr const char* kExtensionsWithTags[] = {"html", "HTML", "htm", "HTM", "css", "CSS", "js", "JS", "xml", "XML"};
constexpr const char* kNoId = "_NO_CLASSID_FOUND_";

// "<object id='tv'>", "< n; }\n if (m >".
constexpr const char* kTag = "<.*>";
// "<OBJECT"; not "< object".
constexpr const char* kObjectStart = "<[Oo][Bb][Jj][Ee][Cc][Tt]";
// "</object>"; not "object >".
constexpr const char* kObjectEnd = "[Oo][Bb][Jj][Ee][Cc][Tt]>";
// `id="tv"`, `pid = "a b"`; not `classid="clsid:X"`.
constexpr const char* kDoubleQuotedId = R"(id\s*=\s*"[\w\s\_]*")";
// `id='tv'`; not `id='tv-1'`.
constexpr const char* kSingleQuotedId = R"(id\s*=\s*'[\w\s\_]*')";

// A call with `symbol` among its arguments: "init ( 'tv', 3)"; not "init(a + tv)".
std::string callWithArgument(const std::string& symbol) {
  return R"([\w\d\_]+\s*\(\s*[\d\w\_"'\s,\.]*)" + symbol + R"(\s*[\d\w\_"'\s,\.]*\)\s*)";
}

std::unique_ptr<SWFStateMentInfo> makeRecord(const std::string& expression, const std::string& scope,
                                             const std::string& path) {
  auto record = std::make_unique<SWFStateMentInfo>();
  record->expression = std::make_unique<std::string>(expression);
  record->scope = scope;
  record->path = path;
  return record;
}

// The headers of the functions that script defines, as "init(a,b)" and each once. They are gone through when the first
// one is asked for, which in most applications nobody does.
class DefinedFunctions {
 public:
  explicit DefinedFunctions(const std::vector<FlashFunctionInfo*>& functions) : functions_(functions) {}

  // Those with that name before the parenthesis.
  const std::vector<std::string>& headersOf(const std::string& name) {
    std::unordered_set<std::string> known;
    for (; read_ < functions_.size(); ++read_) {
      const std::string bare = withoutBlanks(std::string(functions_[read_]->header));
      const std::string header = without(without(bare, "function"), ":");
      if (known.insert(header).second) byName_[header.substr(0, header.find('('))].push_back(header);
    }
    return byName_[name];
  }

 private:
  const std::vector<FlashFunctionInfo*>& functions_;
  std::size_t read_ = 0;
  std::unordered_map<std::string, std::vector<std::string>> byName_;
};

struct ObjectTags {
  const Pattern start{kObjectStart};
  const Pattern end{kObjectEnd};
};

class IdAttributes {
 public:
  // The id of an object element, or kNoId.
  std::string idOf(const std::string& element) const {
    std::string match;
    int matches = 0;
    for (const Pattern& attribute : attributes_) {
      for (MatchCursor at(attribute, element.c_str()); at.next(); ++matches)
        match = at.match();
    }
    if (matches != 1) return kNoId;
    const std::size_t first = match.find_first_of("\"'");
    return match.substr(first + 1, match.find_last_of("\"'") - first - 1);
  }

 private:
  const Pattern attributes_[2] = {Pattern(kDoubleQuotedId), Pattern(kSingleQuotedId)};
};

}  // namespace

RunResult APIAnalysis::FindObjectTagToken() {
  for (std::size_t i = 0; i < worthfulSourceList.size(); ++i) {
    const std::string& extension = *worthfulExtList[i];
    const bool hasTags = std::any_of(std::begin(kExtensionsWithTags), std::end(kExtensionsWithTags),
                                     [&](const char* known) { return extension == known; });
    if (hasTags) (void)FindObjectTags(worthfulSourceList[i], worthfulPathList[i]);
  }
  return RUN_SUCCESS;
}

bool APIAnalysis::FindObjectTags(std::string* text, std::string* path) {
  const Pattern tags(kTag);
  const ObjectTags objectTags;
  bool complete = false;
  bool inside = false;
  std::string element;
  for (MatchCursor at(tags, text->c_str()); at.next();) {
    const std::string tag = at.match();
    const bool hasStart = objectTags.start.matchesIn(tag.c_str());
    const bool hasEnd = objectTags.end.matchesIn(tag.c_str());
    if (!hasStart && !inside) continue;
    if (hasStart && hasEnd) {
      element = tag;
    } else {
      element += tag;
    }
    inside = true;
    if (!hasEnd) continue;

    complete = true;
    for (const std::string classId : pluginClassIdTable) {
      if (element.find(classId) == std::string::npos) continue;
      const std::string known = withoutBlanks(classId);
      append(objectTagList, makeRecord(makeKey(known, withoutBlanks(element)), "Global", *path));
      append(objectClassList, makeRecord(known, "Global", *path));
      break;
    }
    element.clear();
    inside = false;
  }
  return complete;
}

RunResult APIAnalysis::ObjectStartIDChecker(bool& hasStart, bool& hasEnd, std::string* text) {
  hasStart = Pattern(kObjectStart).matchesIn(text->c_str());
  hasEnd = Pattern(kObjectEnd).matchesIn(text->c_str());
  return RUN_SUCCESS;
}

std::string APIAnalysis::parseObjectID(std::string element) {
  std::vector<std::string> matches;
  for (const char* attribute : {kDoubleQuotedId, kSingleQuotedId}) {
    const Pattern pattern(attribute);
    for (MatchCursor at(pattern, element.c_str()); at.next();)
      matches.push_back(at.match());
  }
  if (matches.size() != 1) return kNoId;
  const std::size_t first = matches[0].find_first_of("\"'");
  return matches[0].substr(first + 1, matches[0].find_last_of("\"'") - first - 1);
}

RunResult APIAnalysis::FindObjectID() {
  const IdAttributes attributes;
  DefinedFunctions functions(functionBlockList);
  std::unordered_set<std::string> known;
  for (const SWFStateMentInfo* record : objectIdList)
    known.insert(*record->expression);
  std::unordered_set<std::string> searched;
  for (const SWFStateMentInfo* object : objectTagList) {
    const std::string symbol = withoutBlanks(attributes.idOf(*object->expression));
    const bool hasClass = detail::split(*object->expression, "#").size() >= 2;
    const std::string classId = hasClass ? splitKey(*object->expression).classId : kNoId;
    const std::string key = makeKey(classId, symbol);
    if (known.insert(key).second) append(objectIdList, makeRecord(key, "Global", object->path));
    if (!searched.insert(key).second) continue;  // the same symbol has the same aliases

    const Pattern calls(callWithArgument(symbol));
    std::set<std::pair<std::string, int>> followed;  // function and position: equal ones have the same aliases
    for (std::size_t j = 0; j < worthfulSourceList.size(); ++j) {
      detail::SourceIndex& source = known_->indexOf(*worthfulSourceList[j]);
      for (MatchCursor at(calls, source.text(), source.forSearchOf(source.text().size())); at.next();) {
        std::string function;
        const int position = funcParameterParsing(at.match(), symbol, function);
        if (function.find("getElementById") != std::string::npos) continue;
        if (!followed.emplace(function, position).second) continue;
        for (const std::string& header : functions.headersOf(function)) {
          const std::string alias = getParamterByPosition(header, position);
          if (!known.insert(makeKey(classId, alias)).second) continue;
          TARVO_LOG("[%s] VariationSymbol [%s]\t", __func__, alias.c_str());
          // KEPT: an alias has no scope, unlike every other record. (test AliasHasNoScope)
          append(objectIdList, makeRecord(makeKey(classId, alias), "", *worthfulPathList[j]));
        }
      }
    }
  }
  return RUN_SUCCESS;
}

int APIAnalysis::parseEmbedsTagIndex(std::string* text) {
  const std::size_t open = text->find('[');
  std::string digits = text->substr(0, 1);
  if (open != std::string::npos) {
    const std::size_t close = text->rfind(']');
    digits = close == std::string::npos || close < open ? std::string() : text->substr(open + 1, close - open - 1);
  }
  const long long number = std::strtoll(digits.c_str(), nullptr, 10);  // clamps at 64 bits
  return static_cast<int>(
      std::clamp<long long>(number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

}  // namespace FlashEngine_1_00
