#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "regex/trex_literal.h"

namespace FlashEngine_1_00::detail {

// Answers questions about one cleaned source, the quicker the more of them there are. The source must outlive it.
class SourceIndex {
 public:
  // `indexRoom`: how many bytes of sources may still get an index, for all sources together.
  SourceIndex(std::string_view source, std::size_t& indexRoom)
      : source_(source), text_(source.substr(0, std::min(source.find('\0'), source.size()))), indexRoom_(indexRoom) {}

  // The source up to its first zero byte, which follows it.
  std::string_view text() const { return text_; }

  // The first place of `wanted` at or after `from`; npos if there is none.
  std::size_t find(std::string_view wanted, std::size_t from = 0);

  // The index to search `bytes` of the source with; null as long as searches without one have cost less than it would,
  // and where there is no room for it.
  TextIndex* forSearchOf(std::size_t bytes);

  // The 1-based line of a place. A line feed at the very start of the source is not counted.
  int lineOf(std::size_t place);

 private:
  std::string_view source_;
  std::string_view text_;
  std::size_t& indexRoom_;
  std::size_t searched_ = 0;  // bytes
  std::unique_ptr<TextIndex> index_;
  bool linesKnown_ = false;
  std::vector<std::uint32_t> lineFeeds_;
};

}  // namespace FlashEngine_1_00::detail
