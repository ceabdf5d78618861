// Test: tests/platform/TimeBudget_test.cpp.

#include "platform/TimeBudget.h"

#include "platform/Limits.h"

timespec firstCheckTime{};
std::uint32_t firstTimeVal = 0;

namespace FlashEngine_1_00 {
namespace {

timespec (*testingClock)() = nullptr;

std::uint32_t microseconds(const timespec& time) {
  return static_cast<std::uint32_t>(time.tv_nsec / 1000) + 1'000'000U * static_cast<std::uint32_t>(time.tv_sec);
}

}  // namespace

timespec monotonicNow() {
  if (testingClock != nullptr) return testingClock();
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now;
}

void startTimeBudget() {
  firstCheckTime = monotonicNow();
  firstTimeVal = microseconds(firstCheckTime);
}

bool timeBudgetSpent() {
  return microseconds(monotonicNow()) - firstTimeVal > kTimeBudgetMicroseconds;
}

void TESTING_ONLY_setClock(timespec (*clock)()) {
  testingClock = clock;
}

}  // namespace FlashEngine_1_00
