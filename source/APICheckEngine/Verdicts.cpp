// Verdicts: is a called method documented?
//
// Reads whiteAPIList and the calls that the scanners found; fills resultList.
// Test: tests/APICheckEngine/Verdicts_test.cpp.

#include "APICheckEngine/Verdicts.h"

#include <algorithm>
#include <unordered_set>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/Keys.h"
#include "APICheckEngine/Knowledge.h"

namespace FlashEngine_1_00 {
namespace {

// "tv.GetModel (1)"; not "GetModel(1)", which has no dot.
constexpr const char* kMethodCall = R"([\.]\s*[\w\d\_]+\s*\()";

constexpr std::size_t kHiddenComponents = 4;  // tmp, the package's number, and two more

bool holds(const APIAnalysis::Strings& list, const std::string& text) {
  return std::any_of(list.begin(), list.end(), [&](const std::string* known) { return *known == text; });
}

}  // namespace

namespace detail {

MethodNames::MethodNames() : call_(kMethodCall) {}

std::string MethodNames::operator()(const std::string& callText) const {
  const std::string_view match = call_.search(callText.c_str());
  std::string name = match.data() == nullptr ? callText : std::string(match);
  for (const char* removed : {".", " ", "("})
    name = without(name, removed);
  return name;
}

std::string findingLine(const std::string& path, int line, const std::string& method) {
  const std::vector<std::string> components = split(path, "/");
  std::string shown = "../";
  for (std::size_t i = kHiddenComponents; i < components.size(); ++i) {
    if (i > kHiddenComponents) shown += '/';
    shown += components[i];
  }
  return shown + "(" + std::to_string(line) + ") : UndocumentedAPI '" + method + "' used\n";
}

std::string callTextOf(const SWFStateMentInfo& call) {
  return call.expression == nullptr ? std::string() : splitKey(*call.expression).symbol;
}

}  // namespace detail

RunResult APIAnalysis::DetermineAPISecurity(Strings& results, SWFStateMentInfo* call) {
  const std::string callText = detail::callTextOf(*call);
  if (callText.empty()) return RUN_SUCCESS;
  const std::string method = known_->methodNames(callText);
  if (known_->documented.contains(method) || (watch != nullptr && watch->accepted.count(method) > 0))
    return RUN_SUCCESS;

  auto line = std::make_unique<std::string>(detail::findingLine(call->path, call->line, method));
  const bool isKnown = &results == &resultList ? known_->findings.contains(*line) : holds(results, *line);
  if (!isKnown) append(results, std::move(line));
  return RUN_UNDOCUMENTED_API;
}

// Keeps a found call and judges it. A scanner ends with the first code other than RUN_SUCCESS.
RunResult APIAnalysis::report(Records& list, std::unique_ptr<SWFStateMentInfo> call, const CallPlace& place) {
  SWFStateMentInfo& kept = *call;
  append(list, std::move(call));
  return judge(kept, place);
}

RunResult APIAnalysis::judge(SWFStateMentInfo& call, const CallPlace& place) {
  const RunResult code = DetermineAPISecurity(resultList, &call);
  if (watch == nullptr) return code;
  using Verdict = FoundCall::Verdict;
  const std::string callText = detail::callTextOf(call);
  std::string method = known_->methodNames(callText.empty() ? std::string(place.call) : callText);
  const Verdict verdict = call.expression == nullptr            ? Verdict::opening
                          : callText.empty()                    ? Verdict::unnamed
                          : code != RUN_SUCCESS                 ? Verdict::undocumented
                          : known_->documented.contains(method) ? Verdict::documented
                                                                : Verdict::accepted;
  if (watch->all || verdict == Verdict::undocumented || verdict == Verdict::accepted) {
    watch->found({place.on, verdict, place.classId, call.path, place.text, place.call, call.line, std::move(method)});
  }
  return watch->all ? RUN_SUCCESS : code;
}

RunResult APIAnalysis::undocumentAPICheckerMain(Strings whiteList, std::string apiName, bool& undocumented) {
  undocumented = !holds(whiteList, apiName);
  return RUN_SUCCESS;
}

RunResult APIAnalysis::Finish(Strings& results) {
  std::unordered_set<const SWFStateMentInfo*> judged;
  for (SWFStateMentInfo* call : foundCallList) {
    if (!judged.insert(call).second) continue;
    const RunResult code = DetermineAPISecurity(results, call);
    if (code != RUN_SUCCESS) return code;
  }
  return RUN_SUCCESS;
}

}  // namespace FlashEngine_1_00
