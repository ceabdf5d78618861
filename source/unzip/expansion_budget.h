#pragma once

#include <cstddef>
#include <cstdint>

// What the packages of one run may still expand to, all together (Limits.h). Of the process, like the time budget: one
// run works at a time.

namespace FlashEngine_1_00 {

// A run begins: everything may be used again.
void startExpansionBudget();

// Whether one more entry, one more directory, `bytes` more may be written; if so, they count as written.
bool takeEntry();
bool takeDirectory();
bool takeBytes(std::size_t bytes);

// A bound of at most `bytes` for the runs that start from now on, for a program whose user sets one. `passed` is called
// where a run passes it, and may end the process.
void lowerExpansionBytes(std::uint64_t bytes, void (*passed)());

// Bounds for the runs that start from now on: `bytes`, and `entries` as well as directories. With zeroes, the real
// ones.
void TESTING_ONLY_setExpansionBounds(std::uint64_t bytes, std::uint32_t entries);

}  // namespace FlashEngine_1_00
