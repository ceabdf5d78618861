#pragma once

#include <cstdint>
#include <ctime>

// The engine's clock: CLOCK_MONOTONIC, and one budget for Flash work that starts when an engine is built.

// When the last engine was built. Exported: the host may read them.
extern timespec firstCheckTime;
// The same in microseconds, modulo 2^32 (it wraps every 71.6 minutes).
extern std::uint32_t firstTimeVal;

namespace FlashEngine_1_00 {

timespec monotonicNow();

// Starts the budget now: sets firstCheckTime and firstTimeVal.
void startTimeBudget();

// Whether more than kTimeBudgetMicroseconds have passed since startTimeBudget. Exactly that many have not used it up,
// and a wrap of the 32-bit count in between does not matter.
bool timeBudgetSpent();

// Replaces the clock by `clock`, or puts the real one back (null).
void TESTING_ONLY_setClock(timespec (*clock)());

// Asks for the budget in a loop with short rounds: reading the clock in each of them would cost as much as their work.
class BudgetWatch {
 public:
  bool spent() {
    if (round_++ % kRounds == 0) spent_ = timeBudgetSpent();
    return spent_;
  }

 private:
  static constexpr unsigned kRounds = 16;
  unsigned round_ = 0;
  bool spent_ = false;
};

}  // namespace FlashEngine_1_00
