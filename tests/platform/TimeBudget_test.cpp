#include "platform/TimeBudget.h"

#include <gtest/gtest.h>

#include "APICheckEngine/APIAnalysis.h"
#include "platform/Limits.h"

using namespace FlashEngine_1_00;

namespace {

timespec testTime{};
timespec readTestTime() {
  return testTime;
}

struct FakeClock {
  FakeClock() { TESTING_ONLY_setClock(readTestTime); }
  ~FakeClock() { TESTING_ONLY_setClock(nullptr); }
};

}  // namespace

TEST(TimeBudget, IsSpentAfterMoreThanTwentySecondsAcrossAnyWrap) {
  const FakeClock clock;
  // The 32-bit count of microseconds wraps at 4294.967296 seconds.
  for (const long start : {0L, 100L, 4290L, 4294L, 86400L}) {
    testTime = {start, 500'000'999};
    APIAnalysis engine;
    EXPECT_EQ(firstCheckTime.tv_sec, start);
    EXPECT_EQ(engine.LimitProcessingTimeNResource(), RUN_SUCCESS) << start;
    testTime = {start + 20, 500'000'000};  // exactly 20,000,000 microseconds
    EXPECT_EQ(engine.LimitProcessingTimeNResource(), RUN_SUCCESS) << start;
    testTime = {start + 20, 500'001'000};
    EXPECT_EQ(engine.LimitProcessingTimeNResource(), RUN_TIME_LIMIT) << start;
  }
}

TEST(TimeBudget, IsTheLaterEnginesForBoth) {
  const FakeClock clock;
  testTime = {0, 0};
  APIAnalysis first;
  testTime = {21, 0};
  EXPECT_EQ(first.LimitProcessingTimeNResource(), RUN_TIME_LIMIT);
  APIAnalysis second;
  EXPECT_EQ(first.LimitProcessingTimeNResource(), RUN_SUCCESS);
}
