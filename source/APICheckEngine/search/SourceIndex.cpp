// Index of one source: of its line feeds from the first question for a line on, of its pieces once plain searches have
// cost as much as that index does. Until then a search goes through the text, which in most sources happens a few
// times. Test: tests/APICheckEngine/VariableBinding_test.cpp, tests/regex/trex_differential_test.cpp.

#include "APICheckEngine/search/SourceIndex.h"

#include <algorithm>

namespace FlashEngine_1_00::detail {
namespace {

constexpr std::size_t kSearchesPerIndex = 32;  // of the whole source, that take about as long as an index of it

}  // namespace

TextIndex* SourceIndex::forSearchOf(std::size_t bytes) {
  searched_ += bytes;
  if (index_ == nullptr && searched_ / kSearchesPerIndex > source_.size() && source_.size() <= indexRoom_) {
    index_ = std::make_unique<TextIndex>(source_, indexRoom_);
  }
  return index_.get();
}

std::size_t SourceIndex::find(std::string_view wanted, std::size_t from) {
  if (index_ != nullptr) return index_->find(wanted, from, source_.size());
  if (from > source_.size()) return std::string_view::npos;
  const char* const end = source_.data() + source_.size();
  const char* const place = TrexLiteral(std::string(wanted)).find(source_.data() + from, end, nullptr);
  const auto at = static_cast<std::size_t>(place - source_.data());
  (void)forSearchOf(at - from);
  return at == source_.size() && !wanted.empty() ? std::string_view::npos : at;
}

int SourceIndex::lineOf(std::size_t place) {
  if (!linesKnown_) {
    // KEPT: a line feed at the very start of the file is not counted. Hosts show these numbers.
    // (test LineFeedAtTheStartIsNotCounted)
    for (std::size_t at = source_.find('\n', 1); at != std::string_view::npos; at = source_.find('\n', at + 1))
      lineFeeds_.push_back(static_cast<std::uint32_t>(at));
    linesKnown_ = true;
  }
  const auto behind = std::upper_bound(lineFeeds_.begin(), lineFeeds_.end(), place);
  return 1 + static_cast<int>(behind - lineFeeds_.begin());
}

}  // namespace FlashEngine_1_00::detail
