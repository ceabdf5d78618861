#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace FlashEngine_1_00::detail {

// Answers where a text stands in a list of texts that only grows. Whoever empties the list forgets the index as well.
class ListIndex {
 public:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  explicit ListIndex(const std::vector<std::string*>& list) : list_(list) {}

  // The first position of `text`; kNone if it is not in the list.
  std::size_t find(std::string_view text) {
    if (recent_ != kNone && *list_[recent_] == text) return recent_;
    for (; known_ < list_.size(); ++known_)
      positions_.emplace(*list_[known_], known_);
    const auto found = positions_.find(text);
    recent_ = found == positions_.end() ? kNone : found->second;
    return recent_;
  }

  bool contains(std::string_view text) { return find(text) != kNone; }

  void forget() {
    positions_.clear();
    recent_ = kNone;
    known_ = 0;
  }

 private:
  const std::vector<std::string*>& list_;
  std::unordered_map<std::string_view, std::size_t> positions_;
  std::size_t recent_ = kNone;  // what was found last, mostly the next one, too
  std::size_t known_ = 0;       // how many of the list's texts are in positions_
};

}  // namespace FlashEngine_1_00::detail
