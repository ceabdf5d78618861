// Plug-in calls in Flash content: the decompiled statements of one SWF file.
//
// A statement is searched for a call on a look-up of the first plug-in symbol; then all statements together are
// searched for calls on the bound variables, as script is. Reads objectIdList and objectVariableList; fills
// flashCallList and, through findAPIsFromPool, foundCallList. Test: tests/APICheckEngine/FlashCalls_test.cpp.

#include <unordered_map>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/CallText.h"
#include "APICheckEngine/Keys.h"
#include "APICheckEngine/Knowledge.h"
#include "APICheckEngine/search/SourceIndex.h"
#include "platform/Limits.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00 {

using detail::Key;

// What the searches of one file may still go through. They do not ask for the time budget: statements that were made
// before it was spent are searched whole.
class APIAnalysis::SearchBound {
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

namespace {

// Calls on a look-up of one symbol in single statements: `document.getElementById("tv").GetSerial`.
class StatementLookUps {
 public:
  explicit StatementLookUps(const std::string& symbol)
      : lookup_(detail::lookupOf(symbol)), call_(detail::lookupOf(symbol) + R"(\s*[\w\d\_]+)") {}

  // The look-up in a statement that calls something on it; without data if it does not.
  std::string_view in(const std::string& statement) const {
    return call_.matchesIn(statement.c_str()) ? lookup_.search(statement.c_str()) : std::string_view();
  }

 private:
  Pattern lookup_;
  Pattern call_;
};

}  // namespace

RunResult APIAnalysis::FindAPIFunctionName4SWF(std::vector<std::string> statements, std::string fileName) {
  const Stop outer = stop_;
  SearchBound bound;
  const std::string_view path = known_->pathOfRecords(fileName);
  const RunResult code = reportLookUpsIn(statements, path, bound);
  if (code != RUN_SUCCESS) return code;
  findVariablesIn(statements, path, bound);
  if (bound.isPassed()) notRead(Gap::flashCut, fileName);
  return endScan(outer);
}

// Records and judges the calls on a look-up of the first symbol, one in a statement.
RunResult APIAnalysis::reportLookUpsIn(const std::vector<std::string>& statements, std::string_view fileName,
                                       SearchBound& bound) {
  // KEPT: only the first symbol is tried; calls on the others are found by the search of all statements together. Hosts
  // have the findings on record. (test OnlyTheFirstSymbolIsLookedUpInStatements)
  if (objectIdList.empty()) return RUN_SUCCESS;
  const Key key = detail::splitKey(*objectIdList.front()->expression);
  const StatementLookUps lookUps(key.symbol);
  for (const std::string& statement : statements) {
    if (!bound.allows(statement.size())) break;
    const std::string_view lookUp = lookUps.in(statement);
    if (lookUp.data() == nullptr) continue;
    const auto begin = static_cast<std::size_t>(lookUp.data() - statement.data());
    const std::string callText = statement.substr(begin + lookUp.size());
    const CallPlace place{FoundCall::On::flashLookUp, key.classId, statement,
                          std::string_view(statement).substr(begin)};
    if (detail::holdsBuiltIn(callText)) {
      if (observesAll()) observeBuiltIn(fileName, 0, place);
      continue;
    }
    const RunResult code = report(flashCallList, makeStatementCall(key.classId, callText, fileName), place);
    if (code != RUN_SUCCESS) return code;
  }
  return RUN_SUCCESS;
}

std::unique_ptr<SWFStateMentInfo> APIAnalysis::makeStatementCall(const std::string& classId,
                                                                 const std::string& callText,
                                                                 std::string_view fileName) {
  auto call = std::make_unique<SWFStateMentInfo>();
  call->expression = nameLookupCall(classId, callText, detail::without("DummyObject." + callText + "()", ")"));
  call->scope = "Global";
  call->path = fileName;
  return call;
}

// Finds and judges the calls on bound variables in all statements together. Only class and name of a variable count
// here: bindings that differ in their function or file are one search.
void APIAnalysis::findVariablesIn(const std::vector<std::string>& statements, std::string_view fileName,
                                  SearchBound& bound) {
  std::string joined;
  for (const std::string& statement : statements)
    joined += statement;
  std::size_t indexRoom = kMaxIndexedBytes;
  detail::SourceIndex index(joined, indexRoom);
  FoundCalls found(objectVariableList);
  std::unordered_map<std::string_view, SWFStateMentInfo*> firsts;  // by expression
  for (SWFStateMentInfo* binding : objectVariableList) {
    const auto [first, isNew] = firsts.try_emplace(*binding->expression, binding);
    const bool isIndexed = index.forSearchOf(0) != nullptr;
    if (isNew && !bound.allows(index.text().size() / (isIndexed ? kFlashIndexedSearches : 1))) break;
    findCallsOn(*first->second, index.text(), &index, fileName, FoundCall::On::flashVariable, found);
  }
}

}  // namespace FlashEngine_1_00
