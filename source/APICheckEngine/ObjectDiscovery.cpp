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
#include "APICheckEngine/CallParameters.h"
#include "APICheckEngine/Keys.h"
#include "APICheckEngine/Knowledge.h"
#include "APICheckEngine/Tables.h"
#include "APICheckEngine/search/ArgumentCalls.h"
#include "APICheckEngine/search/DefinedFunctions.h"
#include "APICheckEngine/search/ObjectElements.h"
#include "platform/Log.h"
#include "platform/PartWork.h"

namespace FlashEngine_1_00 {

struct detail::PluginElement {
  std::string classId;
  std::string text;  // without blanks
};

using detail::Key;
using detail::makeKey;
using detail::splitKey;
using detail::withoutBlanks;

namespace {

constexpr const char* kExtensionsWithTags[] = {"html", "HTML", "htm", "HTM", "css", "CSS", "js", "JS", "xml", "XML"};

// Scope and path outlive the record.
std::unique_ptr<SWFStateMentInfo> makeRecord(const std::string& expression, std::string_view scope,
                                             std::string_view path) {
  auto record = std::make_unique<SWFStateMentInfo>();
  record->expression = std::make_unique<std::string>(expression);
  record->scope = scope;
  record->path = path;
  return record;
}

// The first class identifier of the table that stands in an element; empty if none does.
std::string pluginClassIn(const std::string& element) {
  for (const char* classId : pluginClassIdTable) {
    if (element.find(classId) != std::string::npos) return withoutBlanks(classId);
  }
  return {};
}

// Appends the complete object elements of known plug-ins in a zero-terminated text. Whether it has any of others.
bool findPluginElements(const char* text, const detail::ObjectTags& tags, std::vector<detail::PluginElement>& found) {
  bool hasElements = false;
  for (detail::ObjectElements at(text, tags); at.next();) {
    hasElements = true;
    std::string classId = pluginClassIn(at.element());
    if (!classId.empty()) found.push_back({std::move(classId), withoutBlanks(at.element())});
  }
  return hasElements;
}

// Class identifier and id of a record of objectTagList.
Key symbolOf(const std::string& object, const detail::IdAttributes& attributes) {
  const bool hasClass = detail::split(object, "#").size() >= 2;
  return {hasClass ? splitKey(object).classId : detail::kNoId, withoutBlanks(attributes.idOf(object))};
}

}  // namespace

// Follows symbols into the functions that get them.
class APIAnalysis::Aliases {
 public:
  struct Alias {
    std::string name;
    std::size_t source;  // position of the text with the call
  };

  Aliases(const Strings& sources, const std::vector<FlashFunctionInfo*>& functions, detail::Knowledge& known)
      : functions_(functions) {
    for (const std::string* source : sources)
      calls_.emplace_back(known.indexOf(*source));
  }

  // The parameters that are `symbol` where a function is called with it, in the order of the calls. Calls of functions
  // of one name with the symbol at one position have the same ones, which are given once.
  std::vector<Alias> of(const std::string& symbol) {
    std::vector<Alias> aliases;
    std::set<std::pair<std::string, int>> followed;  // function and position
    detail::PassedSymbol passed(symbol);
    for (std::size_t source = 0; source < calls_.size(); ++source) {
      for (const std::string_view call : calls_[source].passing(passed)) {
        const auto [function, position] = detail::passedArgument(std::string(call), symbol);
        if (function.find("getElementById") != std::string::npos) continue;
        if (!followed.emplace(function, position).second) continue;
        for (const std::string& header : functions_.headersOf(function))
          aliases.push_back({detail::argumentAt(header, position), source});
      }
    }
    return aliases;
  }

 private:
  std::vector<detail::ArgumentCalls> calls_;  // one per source
  detail::DefinedFunctions functions_;
};

// Goes through all sources.
class APIAnalysis::ElementScan : public PartWork {
 public:
  explicit ElementScan(APIAnalysis& engine)
      : engine_(engine), tags_(partLanes()), elements_(engine.worthfulSourceList.size()) {}

  void prepare(std::size_t part, std::size_t lane) override {
    const std::string& extension = *engine_.worthfulExtList[part];
    const bool hasTags = std::any_of(std::begin(kExtensionsWithTags), std::end(kExtensionsWithTags),
                                     [&](const char* known) { return extension == known; });
    if (hasTags) (void)findPluginElements(engine_.worthfulSourceList[part]->c_str(), tags_[lane], elements_[part]);
  }

  void take(std::size_t part) override {
    const std::vector<detail::PluginElement> found = std::move(elements_[part]);
    engine_.appendPluginElements(found, *engine_.worthfulPathList[part]);
  }

 private:
  APIAnalysis& engine_;
  std::vector<detail::ObjectTags> tags_;  // of each lane
  std::vector<std::vector<detail::PluginElement>> elements_;
};

RunResult APIAnalysis::FindObjectTagToken() {
  ElementScan scan(*this);
  runParts(worthfulSourceList.size(), scan);
  return RUN_SUCCESS;
}

bool APIAnalysis::FindObjectTags(std::string* text, std::string* path) {
  std::vector<detail::PluginElement> found;
  const bool hasElements = findPluginElements(text->c_str(), detail::ObjectTags(), found);
  appendPluginElements(found, *path);
  return hasElements;
}

void APIAnalysis::appendPluginElements(const std::vector<detail::PluginElement>& elements, const std::string& foundIn) {
  const std::string_view path = known_->pathOfRecords(foundIn);
  for (const detail::PluginElement& element : elements) {
    append(objectTagList, makeRecord(makeKey(element.classId, element.text), "Global", path));
    append(objectClassList, makeRecord(element.classId, "Global", path));
  }
}

RunResult APIAnalysis::ObjectStartIDChecker(bool& hasStart, bool& hasEnd, std::string* text) {
  const detail::ObjectTags tags;
  hasStart = tags.starts(*text);
  hasEnd = tags.ends(*text);
  return RUN_SUCCESS;
}

std::string APIAnalysis::parseObjectID(std::string element) {
  return detail::IdAttributes().idOf(element);
}

RunResult APIAnalysis::FindObjectID() {
  const detail::IdAttributes attributes;
  Aliases aliases(worthfulSourceList, functionBlockList, *known_);
  std::unordered_set<std::string> known;
  for (const SWFStateMentInfo* record : objectIdList)
    known.insert(*record->expression);
  std::unordered_set<std::string> followed;
  for (const SWFStateMentInfo* object : objectTagList) {
    const auto [classId, symbol] = symbolOf(*object->expression, attributes);
    const std::string key = makeKey(classId, symbol);
    if (known.insert(key).second) append(objectIdList, makeRecord(key, "Global", object->path));
    if (!followed.insert(key).second) continue;  // the same symbol has the same aliases
    for (const auto& [alias, source] : aliases.of(symbol)) {
      if (!known.insert(makeKey(classId, alias)).second) continue;
      TARVO_LOG("[%s] VariationSymbol [%s]\t", __func__, alias.c_str());
      // KEPT: an alias has no scope, unlike every other record. (test AliasHasNoScope)
      append(objectIdList, makeRecord(makeKey(classId, alias), "", known_->pathOfRecords(*worthfulPathList[source])));
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
