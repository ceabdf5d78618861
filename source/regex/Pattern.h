#pragma once

#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "regex/trex_find.h"

// A compiled pattern for the length of one use: compiled from a fresh copy of its text, freed with the object. One that
// does not compile matches nothing. For patterns that cannot match empty.
class Pattern {
 public:
  explicit Pattern(std::string_view text) : expression_(trex_compile(std::string(text).c_str(), nullptr), trex_free) {}

  // The leftmost match in the zero-terminated `text`, into which the view points; a null view if there is none.
  std::string_view search(const char* text) const { return searchRange(text, endOf(text)); }

  bool matchesIn(const char* text) const { return search(text).data() != nullptr; }

  // The leftmost match in [begin, end); *end must be readable.
  std::string_view searchRange(const char* begin, const char* end) const {
    std::string_view match;
    if (expression_ != nullptr) (void)TrexFinder(*expression_, begin, end, nullptr).next(match);
    return match;
  }

 private:
  friend class MatchCursor;

  // The end of a text that is searched, which hosts can ask for like after trex_search. Searches may go on in several
  // threads (platform/PartWork.h), each with patterns of its own.
  static const char* endOf(const char* text) {
    const char* const end = text + std::strlen(text);
    __atomic_store_n(&g_limitAddress, end, __ATOMIC_RELAXED);
    return end;
  }

  std::unique_ptr<TrexExpression, void (*)(TrexExpression*)> expression_;
};

// All matches of a pattern in a zero-terminated text, left to right; each search starts where the match before it
// ended.
//
//   for (MatchCursor at(pattern, text); at.next();) use(at.match());
//
// Pattern and text must outlive the cursor and its views.
class MatchCursor {
 public:
  MatchCursor(const Pattern& pattern, const char* text)
      : MatchCursor(pattern, {text, static_cast<std::size_t>(Pattern::endOf(text) - text)}, nullptr) {}

  // In `text`, behind which a byte must be readable, with an index of that text or one around it or null.
  MatchCursor(const Pattern& pattern, std::string_view text, TextIndex* index) {
    if (pattern.expression_ != nullptr) {
      finder_.emplace(*pattern.expression_, text.data(), text.data() + text.size(), index);
    }
  }

  bool next() { return finder_.has_value() && finder_->next(match_); }

  // The leftmost match that starts in [from, to), wherever the one before it ended. The places given must not go down.
  bool nextIn(const char* from, const char* to) { return finder_.has_value() && finder_->nextIn(from, to, match_); }

  // Whether a match starts at a place of the text, or behind its end.
  bool startsAt(const char* place) { return finder_.has_value() && finder_->startsAt(place, match_); }

  std::string_view view() const { return match_; }
  std::string match() const { return std::string(match_); }

 private:
  std::optional<TrexFinder> finder_;
  std::string_view match_;
};
