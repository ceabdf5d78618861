// Test: tests/APICheckEngine/SourceScan_test.cpp.

#include "APICheckEngine/search/BraceIndex.h"

#include <algorithm>

#include "APICheckEngine/search/NextByte.h"

namespace FlashEngine_1_00::detail {

// With the balance b(i) of opened less closed braces before brace i, the counts from brace i on agree right after the
// first brace j >= i with b(j + 1) = b(i). One pass from the back finds it for every i.
BraceIndex::BraceIndex(std::string_view text) {
  std::vector<long> balance{0};
  NextByte opening(text, '{');
  NextByte closing(text, '}');
  for (std::size_t at = 0; (at = std::min(opening.from(at), closing.from(at))) != std::string_view::npos; ++at) {
    braces_.push_back(at);
    balance.push_back(balance.back() + (text[at] == '{' ? 1 : -1));
  }
  close_.assign(braces_.size(), kNone);
  const auto [lowest, highest] = std::minmax_element(balance.begin(), balance.end());
  std::vector<std::size_t> nextWithBalance(static_cast<std::size_t>(*highest - *lowest) + 1, kNone);
  const auto next = [&, lowest = *lowest](std::size_t i) -> std::size_t& {
    return nextWithBalance[static_cast<std::size_t>(balance[i] - lowest)];
  };
  for (std::size_t i = braces_.size(); i-- > 0;) {
    next(i + 1) = i;
    close_[i] = next(i);
  }
}

std::size_t BraceIndex::balancedEnd(std::size_t from) const {
  const auto first = std::lower_bound(braces_.begin(), braces_.end(), from);
  if (first == braces_.end()) return kNone;
  const std::size_t close = close_[static_cast<std::size_t>(first - braces_.begin())];
  return close == kNone ? kNone : braces_[close] + 1;
}

}  // namespace FlashEngine_1_00::detail
