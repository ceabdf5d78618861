// Lifetime of the engine, and the entry points through which a host gets one.
//
// Which list is released when, and which survives Init, is one row each in the tables below.
// Test: tests/APICheckEngine/APIAnalysis_test.cpp.

#include "APICheckEngine/APIAnalysis.h"

#include "APICheckEngine/Knowledge.h"
#include "platform/Log.h"
#include "platform/TimeBudget.h"
#include "tarvo/api_check_engine.h"

std::vector<std::string>* g_SWFResultVector = nullptr;

namespace FlashEngine_1_00 {
namespace {

struct StringListRow {
  APIAnalysis::Strings APIAnalysis::*list;
  bool ownsStrings;
  bool emptiedByInit;
};

// In the order in which the destructor releases them.
constexpr StringListRow kStringLists[] = {
    {&APIAnalysis::whiteAPIList, true, true},
    {&APIAnalysis::resultList, true, true},
    {&APIAnalysis::cleanedSourceList, true, true},
    {&APIAnalysis::worthfulSourceList, false, true},  // its texts are those of cleanedSourceList
    // KEPT: paths and extensions survive Init while the texts beside them go. A host that runs one engine twice sees
    // the second run's files at the first run's positions. (test SecondRunKeepsPathsOfTheFirst)
    {&APIAnalysis::worthfulPathList, true, false},
    {&APIAnalysis::worthfulExtList, true, false},
};

constexpr APIAnalysis::Records APIAnalysis::*kObjectLists[] = {
    &APIAnalysis::objectTagList, &APIAnalysis::objectClassList,   &APIAnalysis::objectIdList,
    &APIAnalysis::declareList,   &APIAnalysis::embedsDeclareList, &APIAnalysis::objectVariableList,
};

constexpr APIAnalysis::Records APIAnalysis::*kCallLists[] = {
    &APIAnalysis::foundCallList,    &APIAnalysis::flashCallList,    &APIAnalysis::lookupCandidateList,
    &APIAnalysis::objectAccessList, &APIAnalysis::embedsAccessList,
};

}  // namespace

APIAnalysis::APIAnalysis() : known_(std::make_unique<detail::Knowledge>(whiteAPIList, resultList, worthfulPathList)) {
  TARVO_LOG("Engine Version [%s] ", kEngineVersion);
  startTimeBudget();
  // KEPT: the label says usec, the value is nanoseconds. Hosts parse the line. (test ConstructorLogsItsClock)
  TARVO_LOG("[%s] [sec:usec] : %ld:%ld ", __func__, static_cast<long>(firstCheckTime.tv_sec),
            static_cast<long>(firstCheckTime.tv_nsec));
}

APIAnalysis::~APIAnalysis() {
  TARVO_LOG("[%s] ", __func__);
  const timespec now = monotonicNow();
  TARVO_LOG("[%s] [sec:nsec] : %ld:%ld ", __func__, static_cast<long>(now.tv_sec), static_cast<long>(now.tv_nsec));
  releaseTexts(true);
  releaseAll(functionBlockList);
  for (const auto list : kObjectLists)
    releaseAll(this->*list);
  TARVO_LOG_TEXT("[DeviceAPI]==============================================================");
  for (const auto list : kCallLists)
    releaseAll(this->*list);
  releaseAll(behindStop_);
  TARVO_LOG_TEXT("### All Symbol Table data is Successfully deleted!! ###");
}

// Empties the lists of texts; without `alsoThoseThatSurviveInit`, only those of a single run.
void APIAnalysis::releaseTexts(bool alsoThoseThatSurviveInit) {
  for (const StringListRow& row : kStringLists) {
    if (!row.emptiedByInit && !alsoThoseThatSurviveInit) continue;
    if (row.ownsStrings) releaseAll(this->*row.list);
    (this->*row.list).clear();
  }
}

// Makes the engine ready for another run: nothing of the last one stays but what Init leaves alone.
void APIAnalysis::emptyWorkingLists() {
  known_->forget();
  stop_ = {};
  releaseAll(behindStop_);
  releaseTexts(false);
  releaseAll(functionBlockList);
  for (const auto list : kObjectLists)
    releaseAll(this->*list);
  for (const auto list : kCallLists)
    releaseAll(this->*list);
}

RunResult APIAnalysis::LimitProcessingTimeNResource() {
  return timeBudgetSpent() ? RUN_TIME_LIMIT : RUN_SUCCESS;
}

void APIAnalysis::PrintProcessingTime(std::string name) {
  const timespec now = monotonicNow();
  TARVO_LOG("Time [%s]:%ld:%ld ", name.c_str(), static_cast<long>(now.tv_sec), static_cast<long>(now.tv_nsec));
}

}  // namespace FlashEngine_1_00

extern "C" IAppAnalysis* createInstance() {
  return new FlashEngine_1_00::APIAnalysis;
}

extern "C" void destoryInstance(IAppAnalysis* engine) {
  delete engine;
}

// KEPT: a second call abandons the first list, which the host may still be reading. (test
// SecondResultListReplacesFirst)
extern "C" std::vector<std::string>* createResultVector() {
  g_SWFResultVector = new std::vector<std::string>;
  return g_SWFResultVector;
}

// KEPT: the pointer stays, stale; hosts compare it after the call. (test ResultListPointerStaysAfterDestruction)
extern "C" void destoryResultVector() {
  delete g_SWFResultVector;
}
