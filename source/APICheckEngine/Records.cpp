// Test: tests/APICheckEngine/CallExtraction_test.cpp.

#include "APICheckEngine/Records.h"

#include <unordered_map>

void FlashEngine_1_00::detail::keepLastPlaces(std::vector<SWFStateMentInfo*>& list, std::size_t from) {
  std::unordered_map<const SWFStateMentInfo*, int> seen;
  const auto first = list.begin() + static_cast<std::ptrdiff_t>(from);
  auto kept = list.end();
  for (auto record = list.end(); record != first;) {
    --record;
    if (++seen[*record] <= kMaxEqualRecords) *--kept = *record;
  }
  list.erase(first, kept);
}
