#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace trial {

// Cuts what a browser sends into messages, each of which ends with a NUL.
//
// A message that is longer than the bound is passed over as it arrives, without being kept, and counted.
class MessageReader {
 public:
  explicit MessageReader(std::size_t bound) : bound_(bound) {}

  // Takes bytes as they come and returns the messages that are complete with them, without their NULs. Empty ones are
  // left out.
  std::vector<std::string> take(std::string_view bytes);

  // Messages that were too long.
  std::size_t passedOver() const { return passedOver_; }

 private:
  std::size_t bound_;
  std::string begun_;
  bool isPassing_ = false;
  std::size_t passedOver_ = 0;
};

}  // namespace trial
