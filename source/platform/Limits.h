#pragma once

#include <cstddef>
#include <cstdint>

// Every bound of the engine, with what it bounds and why it has this value.

namespace FlashEngine_1_00 {

// Flash work of one engine, counted from its construction. A person waits for the verdict on the device.
constexpr std::uint32_t kTimeBudgetMicroseconds = 20'000'000;

// Nested calls of the pattern matcher. The engine's own patterns stay below 30; the bound keeps a pattern of the host's
// with thousands of nested groups from using up its stack: such an attempt does not match.
constexpr std::int32_t kMaxMatchDepth = 4000;

// Equal records of one list that are kept: the rules make one for every hit in an excerpt and for every function around
// a function, all with the same text. Nothing that a host sees depends on how many there are.
constexpr int kMaxEqualRecords = 64;

// Package expansion: bytes of one argument of the extraction job, of a package's own path, of an entry's name, and of
// one copy step. Longer names are cut; the values are part of the job's interface.
constexpr std::size_t kMaxJobArgument = 1023;
constexpr std::size_t kMaxPackageName = 255;
constexpr std::size_t kMaxEntryName = 255;
constexpr std::size_t kCopyChunk = 8192;

}  // namespace FlashEngine_1_00
