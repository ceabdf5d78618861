// Accesses in excerpts, which overlap: the source is searched once for all of them.
//
// The plain search takes each excerpt as a text of its own and searches it from its beginning, each search starting
// where the match before it ended. What it finds depends on where it begins: from inside "a.b = $('tv')" it finds
// "b = $('tv')". So the source is searched here from each place from which the plain search searches some excerpt,
// once, in the order of the places, and what is found is kept. An excerpt then goes from one match to the next: to the
// first that does not begin before the excerpt, to the first that does not begin before that one's end, and so on. This
// finds what the plain search finds:
//
// - Whether a match begins at a place, and where it ends, depends on nothing before that place: the access patterns
//   test for no beginning of the text.
// - Nor does it depend on what stands behind the match, but for one byte: a repetition takes all the bytes that it can,
//   and what it can take next is a matter of the next byte. The patterns end with repetitions, so that a match of the
//   whole source ends where the text of an excerpt that reaches further would end it.
// - It does depend on the excerpt's end if the match reaches it: there the plain search sees the end of its text. Such
//   a match, and the last one only can be it, is searched for once more in a copy of what is left of the excerpt. If
//   that search finds something shorter, more can follow, and is found in the copy as well.
// - What stands behind the closing bracket of a look-up is optional in the patterns: more text can make a match longer,
//   but cannot undo it. So every match of the plain search begins where one of the source does.
//
// Test:
// tests/APICheckEngine/Search_test.cpp, against the plain search.

#include "APICheckEngine/search/ExcerptAccesses.h"

#include <algorithm>

namespace FlashEngine_1_00::detail {

std::vector<std::size_t> ExcerptAccesses::in(std::string_view excerpt) {
  const char* const end = excerpt.data() + excerpt.size();
  findPlaces(excerpt);
  std::vector<std::size_t> accesses;
  auto place = std::partition_point(places_.begin(), places_.end(),
                                    [&](const Place& p) { return p.text.data() < excerpt.data(); });
  for (const char* at = excerpt.data(); place != places_.end() && place->text.data() < end; ++place) {
    if (place->text.data() < at) continue;
    at = place->text.data() + place->text.size();
    if (at >= end) {
      addCut({place->text.data(), static_cast<std::size_t>(end - place->text.data())}, accesses);
      break;
    }
    if (place->access == kUnknown) place->access = accessOf(place->text);
    accesses.push_back(place->access);
  }
  return accesses;
}

// Adds the accesses in what is left of an excerpt whose end cuts one.
void ExcerptAccesses::addCut(std::string_view rest, std::vector<std::size_t>& accesses) {
  const std::string copy(rest);
  for (MatchCursor at(pattern_, copy.c_str()); at.next();)
    accesses.push_back(
        accessOf(rest.substr(static_cast<std::size_t>(at.view().data() - copy.data()), at.view().size())));
}

// Makes places_ hold all that the plain search comes to in an excerpt. Searches of later excerpts that begin before
// this one's end are made as well, so that all are made in the order of their places.
void ExcerptAccesses::findPlaces(std::string_view excerpt) {
  const char* const end = excerpt.data() + excerpt.size();
  if (!places_.empty() && places_.back().text.data() < excerpt.data()) places_.clear();
  for (; next_ != behind_ && next_->text.data() < end; ++next_)
    searchOn(next_->text.data(), next_->text.data() + next_->text.size());
  while (!searches_.empty() && searches_.begin()->first < end) {
    const auto [from, to] = *searches_.begin();
    searches_.erase(searches_.begin());
    search(from, to);
  }
}

// One search. The one before it may have found the match that this one would find.
void ExcerptAccesses::search(const char* from, const char* to) {
  const bool isKnown = !places_.empty() && from <= places_.back().text.data();
  if (!isKnown) {
    from = std::max(from, searchedTo_);
    const bool isThere = from < to && cursor_.nextIn(from, to);
    if (isThere) places_.push_back({cursor_.view(), kUnknown});
    searchedTo_ = isThere ? cursor_.view().data() + 1 : std::max(from, to);
    if (!isThere) return;
  }
  const std::string_view found = places_.back().text;
  searchOn(found.data() + found.size(), to);
}

void ExcerptAccesses::searchOn(const char* from, const char* to) {
  if (from >= to) return;
  const char*& known = searches_.try_emplace(from, to).first->second;
  known = std::max(known, to);
}

std::size_t ExcerptAccesses::accessOf(std::string_view text) {
  const auto [known, isNew] = positions_.try_emplace(text, texts_.size());
  if (isNew) texts_.push_back(text);
  return known->second;
}

}  // namespace FlashEngine_1_00::detail
