#pragma once

#include <cstdint>

#include "platform/Limits.h"

namespace FlashEngine_1_00 {

// What the packages of one run expand to at most, all together.
struct ExpansionBounds {
  std::uint64_t bytes = kMaxExpandedBytes;
  std::uint32_t entries = kMaxExpandedEntries;
  std::uint32_t directories = kMaxExpandedEntries;  // made for entries that name them only as a part of their path
};

// What is left of these bounds. Each `take` says whether so much more may be written; if so, it counts as written.
class ExpansionBudget {
 public:
  explicit ExpansionBudget(const ExpansionBounds& bounds = {}) : left_(bounds) {}

  bool takeEntry() { return take(left_.entries, 1U); }
  bool takeDirectory() { return take(left_.directories, 1U); }
  bool takeBytes(std::uint64_t bytes) {
    const bool isTaken = take(left_.bytes, bytes);
    passedBytes_ = passedBytes_ || !isTaken;
    return isTaken;
  }

  bool hasBytes(std::uint64_t bytes) const { return bytes <= left_.bytes; }

  // Whether it was the bytes that did not suffice at some time.
  bool passedBytes() const { return passedBytes_; }

 private:
  template <typename T>
  static bool take(T& left, T count) {
    if (count > left) return false;
    left -= count;
    return true;
  }

  ExpansionBounds left_;
  bool passedBytes_ = false;
};

}  // namespace FlashEngine_1_00
