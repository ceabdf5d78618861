#pragma once

#include <string>
#include <unordered_map>

#include "platform/Limits.h"

namespace FlashEngine_1_00::detail {

// Counts equal records of a list, so that not more than kMaxEqualRecords of them are kept.
class EqualRecords {
 public:
  // Whether one more record of this kind is kept.
  bool keep(const std::string& kind) { return ++counts_[kind] <= kMaxEqualRecords; }

 private:
  std::unordered_map<std::string, int> counts_;
};

}  // namespace FlashEngine_1_00::detail
