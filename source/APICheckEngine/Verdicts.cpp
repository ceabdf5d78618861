// Verdicts: is a called method documented?
//
// Reads whiteAPIList and the calls that the scanners found; fills resultList.
// Test: tests/APICheckEngine/Verdicts_test.cpp.

#include "APICheckEngine/Verdicts.h"

#include <algorithm>

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/Keys.h"
#include "APICheckEngine/Knowledge.h"
#include "APICheckEngine/MethodName.h"

namespace FlashEngine_1_00 {
namespace {

bool holds(const APIAnalysis::Strings& list, const std::string& text) {
  return std::any_of(list.begin(), list.end(), [&](const std::string* known) { return *known == text; });
}

}  // namespace

namespace detail {

std::string_view callTextOf(const SWFStateMentInfo& call) {
  return call.expression == nullptr ? std::string_view() : viewKey(*call.expression).symbol;
}

}  // namespace detail

RunResult APIAnalysis::DetermineAPISecurity(Strings& results, SWFStateMentInfo* call) {
  const std::string_view callText = detail::callTextOf(*call);
  const std::string method = callText.empty() ? std::string() : detail::methodName(callText);
  call->isDocumented = callText.empty() || known_->documented.contains(method) ||
                       (observer != nullptr && observer->accepted.count(method) > 0);
  if (call->isDocumented) return RUN_SUCCESS;

  auto line = std::make_unique<std::string>(detail::findingLine(call->path, call->line, method));
  const bool isKnown = &results == &resultList ? known_->findings.contains(*line) : holds(results, *line);
  if (!isKnown) append(results, std::move(line));
  return RUN_UNDOCUMENTED_API;
}

// Keeps a found call and judges it. A scanner ends with the first code other than RUN_SUCCESS.
RunResult APIAnalysis::report(Records& list, std::unique_ptr<SWFStateMentInfo> call, const CallPlace& place) {
  SWFStateMentInfo& kept = *call;
  append(keptIn(list), std::move(call));
  return judge(kept, place);
}

// The verdict on a call, as for a host, told to the observer if there is one. What keeps a scanner going behind a stop
// is that RUN_SUCCESS is returned then; the first other code stays in `stop_`.
RunResult APIAnalysis::judge(SWFStateMentInfo& call, const CallPlace& place) {
  if (observer == nullptr) return DetermineAPISecurity(resultList, &call);
  Strings behindStop;  // lines that no host gets
  const bool isOnDevice = !stop_.isPassed() && !place.isRepeated;
  const RunResult code = DetermineAPISecurity(isOnDevice ? resultList : behindStop, &call);
  releaseAll(behindStop);
  using Verdict = FoundCall::Verdict;
  const std::string_view callText = detail::callTextOf(call);
  std::string method = detail::methodName(callText.empty() ? place.call : callText);
  const Verdict verdict = call.expression == nullptr            ? Verdict::opening
                          : callText.empty()                    ? Verdict::unnamed
                          : code != RUN_SUCCESS                 ? Verdict::undocumented
                          : known_->documented.contains(method) ? Verdict::documented
                                                                : Verdict::accepted;
  const bool isJudged = verdict != Verdict::opening && verdict != Verdict::unnamed;
  if (isJudged || observer->all) observe(verdict, call.path, call.line, place, std::move(method));
  if (!observer->all) return code;
  if (!stop_.isPassed()) stop_.code = code;
  return RUN_SUCCESS;
}

// Tells the observer, which is there, of a call.
void APIAnalysis::observe(FoundCall::Verdict verdict, std::string_view path, int line, const CallPlace& place,
                          std::string method) const {
  const bool isOnDevice = !stop_.isPassed() && !place.isRepeated;
  observer->callFound(
      {place.on, verdict, isOnDevice, place.classId, path, place.text, place.call, line, std::move(method)});
}

// Takes a place in `list` for one of equal records; false if they have all the places that are kept. Behind a stop no
// list of a host's gets any more: a record that is in none stands apart, which owns it.
bool APIAnalysis::keep(detail::EqualRecords<SWFStateMentInfo>& record, Records& list) {
  if (!stop_.isPassed()) return record.addTo(list);
  if (!record.isInList()) (void)record.addTo(behindStop_);
  return true;
}

// Ends a scanner that may have gone on behind its stop, inside another one that had stopped as `outer` says, or not.
// The code with which it ends for a host.
RunResult APIAnalysis::endScan(const Stop& outer) {
  const RunResult code = stop_.code;
  stop_ = outer;
  return code;
}

RunResult APIAnalysis::undocumentAPICheckerMain(Strings whiteList, std::string apiName, bool& undocumented) {
  undocumented = !holds(whiteList, apiName);
  return RUN_SUCCESS;
}

RunResult APIAnalysis::Finish(Strings& results) {
  for (SWFStateMentInfo* call : foundCallList) {
    if (call->isDocumented) continue;
    const RunResult code = DetermineAPISecurity(results, call);
    if (code != RUN_SUCCESS) return code;
  }
  return RUN_SUCCESS;
}

}  // namespace FlashEngine_1_00
