#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "platform/Limits.h"
#include "swf/ListedLine.h"

namespace FlashEngine_1_00 {

// Appends the lines of a listing to a list, as texts.
class LineList : public ListingTaker {
 public:
  // `listedBytes` is what the lines of the listing take up to now, of kMaxListingBytes.
  LineList(std::vector<std::string>& lines, const std::size_t& listedBytes)
      : lines_(lines), listedBytes_(listedBytes) {}

  // While a list grows it stands twice in memory: where it gets longer than half of all that fits, it grows no more
  // after that.
  void expect(std::size_t count) override {
    if (lines_.capacity() - lines_.size() >= count) return;
    const std::size_t most = lines_.size() + (kMaxListingBytes - listedBytes_) / kLineBytes;
    const std::size_t wanted = lines_.size() + std::max(count, lines_.size());
    lines_.reserve(wanted > most / 2 ? most : wanted);
  }

  void take(const ListedLine& line) override {
    expect(1);
    lines_.push_back(line.text());
  }

 private:
  std::vector<std::string>& lines_;
  const std::size_t& listedBytes_;
};

}  // namespace FlashEngine_1_00
