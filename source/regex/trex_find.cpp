// Test: tests/regex/trex_differential_test.cpp.

#include "regex/trex_find.h"

#include <algorithm>
#include <string_view>

bool TrexFinder::next(const char*& matchBegin, const char*& matchEnd) {
  const char* begin = at_;
  for (const char* at = nextCandidate(begin); at < end_; at = nextCandidate(at + 1)) {
    if (!e_.firstBytes.contains(static_cast<unsigned char>(*at))) continue;
    const char* end = trexAttempt(e_, begin, end_, at);
    if (end == nullptr) continue;
    matchBegin = at;
    at_ = matchEnd = end;
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
  if (required_ != nullptr && required_ >= at) return required_ <= end_;
  const std::string_view rest(at, static_cast<std::size_t>(end_ - at) + 1);
  const std::size_t hit = rest.find(e_.required);
  required_ = hit == std::string_view::npos ? end_ + 1 : at + hit;
  return required_ <= end_;
}

void TrexFinder::findWindow(const TrexAnchor& anchor, const char* at, Window& window) const {
  // The byte at the end belongs to what elements can see.
  const std::string_view rest(at, static_cast<std::size_t>(end_ - at) + 1);
  const std::size_t hit = rest.find(anchor.literal);
  window.place = window.from = hit == std::string_view::npos ? end_ + 1 : at + hit;
  while (window.from > at && window.place <= end_ &&
         anchor.before.contains(static_cast<unsigned char>(window.from[-1]))) {
    --window.from;
  }
}
