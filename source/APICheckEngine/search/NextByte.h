#pragma once

#include <cstddef>
#include <string_view>

namespace FlashEngine_1_00::detail {

// The next place of a byte in a text, for questions whose places only grow: the text is gone through once.
class NextByte {
 public:
  NextByte(std::string_view text, char byte) : text_(text), byte_(byte) {}

  // The first place that is not before `at`; npos if there is none.
  std::size_t from(std::size_t at) {
    if (!known_ || place_ < at) place_ = text_.find(byte_, at);
    known_ = true;
    return place_;
  }

 private:
  std::string_view text_;
  char byte_;
  bool known_ = false;
  std::size_t place_ = 0;
};

}  // namespace FlashEngine_1_00::detail
