#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace FlashEngine_1_00::detail {

// Answers, for any place in a text, where the braces counted from there first balance.
class BraceIndex {
 public:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  explicit BraceIndex(std::string_view text);

  // The end (one past the brace) of the shortest piece from `from` on that holds as many "{" as "}", and at least one
  // of each; kNone if there is none.
  std::size_t balancedEnd(std::size_t from) const;

 private:
  std::vector<std::size_t> braces_;  // positions
  std::vector<std::size_t> close_;   // for each brace as the first one counted, the brace at which the counts agree
};

}  // namespace FlashEngine_1_00::detail
