// Test: tests/regex/trex_differential_test.cpp.

#include "regex/trex_find.h"

#include <algorithm>

TrexFinder::TrexFinder(TrexExpression& expression, const char* begin, const char* end, const TextIndex* index)
    : e_(expression), at_(begin), end_(end), index_(index), search_(++expression.search) {}

bool TrexFinder::nextFrom(const char* begin, std::string_view& match) {
  if (search_ != e_.search) search_ = ++e_.search;  // another search of the same expression came in between
  for (const char* at = nextCandidate(begin); at < end_; at = nextCandidate(at + 1)) {
    if (!e_.firstBytes.contains(static_cast<unsigned char>(*at))) continue;
    const char* end = trexAttempt(e_, begin, end_, at, !e_.testsBegin);
    if (end == nullptr) continue;
    match = {at, static_cast<std::size_t>(end - at)};
    at_ = end;
    return true;
  }
  at_ = end_;
  return false;
}

// The first place from `at` on where a match could start; end_ if there is none.
const char* TrexFinder::nextCandidate(const char* at) {
  if (e_.anchors.empty() || at >= end_) return at;
  if (!holdsRequired(at)) return end_;
  const char* nearest = end_;
  for (std::size_t i = 0; i < e_.anchors.size(); ++i) {
    Window& window = windows_[i];
    if (window.place == nullptr || window.place < at) findWindow(e_.anchors[i], at, window);
    nearest = std::min(nearest, std::max(at, window.from));
  }
  return nearest;
}

bool TrexFinder::holdsRequired(const char* at) {
  if (required_ == nullptr || required_ < at) required_ = find(e_.required, at);
  return required_ <= end_;
}

void TrexFinder::findWindow(const TrexAnchor& anchor, const char* at, Window& window) const {
  window.place = window.from = find(anchor.literal, at);
  while (window.from > at && window.place <= end_ &&
         anchor.before.contains(static_cast<unsigned char>(window.from[-1]))) {
    --window.from;
  }
}

// The next place of a literal; one past end_ if there is none. The byte at end_ belongs to what elements can see.
const char* TrexFinder::find(const TrexLiteral& literal, const char* at) const {
  return literal.find(at, end_ + 1, index_);
}
