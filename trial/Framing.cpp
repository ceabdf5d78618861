// Test: tests/trial/Protocol_test.cpp.

#include "trial/Framing.h"

#include <utility>

namespace trial {

std::vector<std::string> MessageReader::take(std::string_view bytes) {
  std::vector<std::string> messages;
  while (!bytes.empty()) {
    const std::size_t end = bytes.find('\0');
    const std::string_view piece = bytes.substr(0, end);
    if (!isPassing_ && begun_.size() + piece.size() > bound_) {
      isPassing_ = true;
      ++passedOver_;
      begun_ = {};
    }
    if (!isPassing_) begun_ += piece;
    if (end == std::string_view::npos) break;
    if (!begun_.empty()) messages.push_back(std::exchange(begun_, {}));
    isPassing_ = false;
    bytes.remove_prefix(end + 1);
  }
  return messages;
}

}  // namespace trial
