// Test: tests/APICheckEngine/HostilePackages_test.cpp.

#include "unzip/expansion_budget.h"

#include <algorithm>

#include "platform/Limits.h"

namespace FlashEngine_1_00 {
namespace {

struct Budget {
  std::uint64_t bytes;
  std::uint32_t entries;
  std::uint32_t directories;
};

constexpr Budget kWhole{kMaxExpandedBytes, kMaxExpandedEntries, kMaxExpandedEntries};
Budget ofARun = kWhole;
Budget left = kWhole;
void (*whenPassed)() = nullptr;

template <typename T>
bool take(T& from, T count) {
  if (count > from) return false;
  from -= count;
  return true;
}

}  // namespace

void startExpansionBudget() {
  left = ofARun;
}

bool takeEntry() {
  return take(left.entries, 1U);
}

bool takeDirectory() {
  return take(left.directories, 1U);
}

bool takeBytes(std::size_t bytes) {
  const bool isTaken = take(left.bytes, std::uint64_t{bytes});
  if (!isTaken && whenPassed != nullptr) whenPassed();
  return isTaken;
}

void lowerExpansionBytes(std::uint64_t bytes, void (*passed)()) {
  ofARun.bytes = std::min(ofARun.bytes, bytes);
  whenPassed = passed;
}

void TESTING_ONLY_setExpansionBounds(std::uint64_t bytes, std::uint32_t entries) {
  ofARun = entries == 0 ? kWhole : Budget{bytes, entries, entries};
  startExpansionBudget();
}

}  // namespace FlashEngine_1_00
