#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

// Names: every text that matters (identifiers, property names, constant strings) as a number.

namespace flow {

using Name = std::uint32_t;  // 0 is the empty text

class Names {
 public:
  Names() { (void)of(""); }

  Name of(std::string_view text) {
    const auto found = numbers_.find(text);
    if (found != numbers_.end()) return found->second;
    texts_.emplace_back(text);
    bytes_ += text.size();
    const auto name = static_cast<Name>(texts_.size() - 1);
    numbers_.emplace(texts_.back(), name);
    return name;
  }

  const std::string& text(Name name) const { return texts_[name]; }
  std::size_t bytes() const { return bytes_; }  // of all texts

 private:
  std::deque<std::string> texts_;
  std::unordered_map<std::string_view, Name> numbers_;
  std::size_t bytes_ = 0;
};

}  // namespace flow
