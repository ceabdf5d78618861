// Plug-in calls in Flash content: the decompiled statements of one SWF file.
//
// A statement is searched for a call on a look-up of the first plug-in symbol; then all statements together are
// searched for calls on the bound variables, as script is. Reads objectIdList and objectVariableList; fills
// flashCallList and, through findAPIsFromPool, foundCallList. Test: tests/APICheckEngine/FlashCalls_test.cpp.

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/CallText.h"
#include "APICheckEngine/Keys.h"
#include "APICheckEngine/search/SourceIndex.h"
#include "platform/Limits.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00 {

using detail::Key;

namespace {

// What the searches of one file may still go through. They do not ask for the time budget: statements that were made
// before it was spent are searched whole.
class SearchBound {
 public:
  // Whether `bytes` more may be searched.
  bool allows(std::size_t bytes) {
    isPassed_ = isPassed_ || bytes > left_;
    if (!isPassed_) left_ -= bytes;
    return !isPassed_;
  }
  bool isPassed() const { return isPassed_; }

 private:
  std::uint64_t left_ = kMaxFlashSearchBytes;
  bool isPassed_ = false;
};

}  // namespace

RunResult APIAnalysis::FindAPIFunctionName4SWF(std::vector<std::string> statements, std::string fileName) {
  const Stop outer = stop_;
  SearchBound bound;
  std::string joined;
  for (const std::string& statement : statements)
    joined += statement;
  // KEPT: only the first symbol is tried; calls on the others are found by the search of all statements together. Hosts
  // have the findings on record. (test OnlyTheFirstSymbolIsLookedUpInStatements)
  const Key key = objectIdList.empty() ? Key{} : detail::splitKey(*objectIdList.front()->expression);
  const Pattern call(detail::lookupOf(key.symbol) + R"(\s*[\w\d\_]+)");
  const Pattern lookup(detail::lookupOf(key.symbol));
  for (const std::string& statement : statements) {
    if (!bound.allows(statement.size())) break;
    if (objectIdList.empty() || !call.matchesIn(statement.c_str())) continue;
    const std::string_view prefix = lookup.search(statement.c_str());
    if (prefix.data() == nullptr) continue;
    const std::size_t begin = static_cast<std::size_t>(prefix.data() - statement.data());
    const std::string callText = statement.substr(begin + prefix.size());
    const CallPlace place{FoundCall::On::flashLookUp, key.classId, statement,
                          std::string_view(statement).substr(begin)};
    if (detail::holdsBuiltIn(callText)) {
      if (observesAll()) observeBuiltIn(fileName, 0, place);
      continue;
    }

    auto found = std::make_unique<SWFStateMentInfo>();
    found->expression = nameLookupCall(key.classId, callText, detail::without("DummyObject." + callText + "()", ")"));
    found->scope = "Global";
    found->path = fileName;
    const RunResult code = report(flashCallList, std::move(found), place);
    if (code != RUN_SUCCESS) return code;
  }
  std::size_t indexRoom = kMaxIndexedBytes;
  detail::SourceIndex index(joined, indexRoom);
  detail::FoundCalls found;
  for (const SWFStateMentInfo* binding : objectVariableList) {
    if (found.positions.count(binding) == 0 && !bound.allows(index.text().size())) break;
    findCallsOn(binding, index.text(), &index, fileName, FoundCall::On::flashVariable, found);
  }
  if (bound.isPassed()) notRead(Gap::flashCut, fileName);
  return endScan(outer);
}

}  // namespace FlashEngine_1_00
