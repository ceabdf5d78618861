#include "APICheckEngine/BraceIndex.h"

#include <algorithm>
#include <unordered_map>

namespace FlashEngine_1_00::detail {

// With the balance b(i) of opened less closed braces before brace i, the counts from brace i on agree right after the
// first brace j >= i with b(j + 1) = b(i). One pass from the back finds it for every i.
BraceIndex::BraceIndex(std::string_view text) {
  std::vector<long> balance{0};
  for (std::size_t at = text.find_first_of("{}"); at != std::string_view::npos; at = text.find_first_of("{}", at + 1)) {
    braces_.push_back(at);
    balance.push_back(balance.back() + (text[at] == '{' ? 1 : -1));
  }
  close_.assign(braces_.size(), kNone);
  std::unordered_map<long, std::size_t> nextWithBalance;
  for (std::size_t i = braces_.size(); i-- > 0;) {
    nextWithBalance[balance[i + 1]] = i;
    const auto found = nextWithBalance.find(balance[i]);
    if (found != nextWithBalance.end()) close_[i] = found->second;
  }
}

std::size_t BraceIndex::balancedEnd(std::size_t from) const {
  const auto first = std::lower_bound(braces_.begin(), braces_.end(), from);
  if (first == braces_.end()) return kNone;
  const std::size_t close = close_[static_cast<std::size_t>(first - braces_.begin())];
  return close == kNone ? kNone : braces_[close] + 1;
}

}  // namespace FlashEngine_1_00::detail
