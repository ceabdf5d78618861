// Search by anchors: every match holds one of the expression's literals, with known bytes in front of it. The next
// place of each literal is looked for, and from there back over the bytes that may stand before it; only the places in
// between can begin a match that holds it. Those before the nearest such stretch need not be tried. Test:
// tests/regex/trex_differential_test.cpp.

#include "regex/trex_find.h"

#include <algorithm>

namespace {

constexpr std::size_t kFurthestReach = static_cast<std::size_t>(-1) / 2;

}  // namespace

TrexFinder::TrexFinder(TrexExpression& expression, const char* begin, const char* end, TextIndex* index)
    : e_(expression), at_(begin), end_(end), index_(index), search_(++expression.search) {}

bool TrexFinder::nextIn(const char* begin, const char* limit, std::string_view& match) {
  for (const char* at = nextCandidate(begin); at < limit; at = nextCandidate(at + 1)) {
    if (!attempt(begin, at, match)) continue;
    at_ = at + match.size();
    return true;
  }
  at_ = limit;
  return false;
}

bool TrexFinder::startsAt(const char* at, std::string_view& match) {
  return at <= end_ && attempt(at, at, match);
}

// One attempt at `at`, in a text that begins at `begin`.
bool TrexFinder::attempt(const char* begin, const char* at, std::string_view& match) {
  if (!e_.firstBytes.contains(static_cast<unsigned char>(*at))) return false;
  if (search_ != e_.search) search_ = ++e_.search;  // another search of the same expression came in between
  const char* const end = trexAttempt(e_, begin, end_, at, !e_.testsBegin);
  if (end == nullptr) return false;
  match = {at, static_cast<std::size_t>(end - at)};
  return true;
}

// The first place from `at` on where a match could start; end_ if there is none.
const char* TrexFinder::nextCandidate(const char* at) {
  if (e_.anchors.empty() || at >= end_) return at;
  const char* nearest = end_;
  for (std::size_t i = 0; i < e_.anchors.size(); ++i) {
    Window& window = windows_[i];
    if (window.place == nullptr || window.place < at) findWindow(e_.anchors[i], at, window);
    nearest = std::min(nearest, std::max(at, window.from));
  }
  return nearest;
}

// The next place of an anchor's literal to which a match from `at` on can come; one past end_ if there is none. That no
// match can come to a place is found out for so much of the text only, each time for more: a search that ends soon must
// not go through all of it.
void TrexFinder::findWindow(const TrexAnchor& anchor, const char* at, Window& window) {
  const char* const known = at + std::min(reach_, static_cast<std::size_t>(end_ + 1 - at));
  reach_ = std::min(2 * reach_, kFurthestReach);
  if (window.required == nullptr || window.required < at) window.required = anchor.required.find(at, known, index_);
  window.from = window.place = end_ + 1;
  if (window.required > end_) return;
  const std::size_t size = anchor.literal.text().size();
  for (const char* place = find(anchor.literal, at); place <= end_; place = find(anchor.literal, place + 1)) {
    // What follows is at most the byte at the end, or nothing at all where the literal takes that.
    const bool isFollowed = place + size > end_ || anchor.after.contains(static_cast<unsigned char>(place[size]));
    const char* const from = isFollowed ? anchor.before.walkBack(place, at, place <= known) : nullptr;
    if (from == nullptr) continue;
    window.from = from;
    window.place = place;
    return;
  }
}

// The next place of a literal; one past end_ if there is none. The byte at end_ belongs to what elements can see.
const char* TrexFinder::find(const TrexLiteral& literal, const char* at) const {
  return literal.find(at, end_ + 1, index_);
}
