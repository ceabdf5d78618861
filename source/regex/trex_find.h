#pragma once

#include <array>
#include <string_view>

#include "regex/trex_expression.h"

// Finds the matches of an expression in [begin, end), left to right, each search starting where the match before it
// ended; *end must be readable. The matches are those of trex_searchrange, but the groups inside them are not kept, so
// that places where no match can start need not be tried: a match is only tried where, over bytes that may stand before
// it, one of the expression's literals can be reached.
//
// Expression and text must outlive the finder. For expressions that cannot match empty.
class TrexFinder {
 public:
  // With an index of a text around [begin, end], or null.
  TrexFinder(TrexExpression& expression, const char* begin, const char* end, TextIndex* index);

  // The next match; false if there is none.
  bool next(std::string_view& match) { return nextIn(at_, end_, match); }

  // The leftmost match that starts in [from, to), wherever the one before it ended. The places given must not go down.
  bool nextIn(const char* from, const char* to, std::string_view& match);

  // The match that starts at `at`, which may also be the end or the place behind it; false if there is none.
  bool startsAt(const char* at, std::string_view& match);

 private:
  // The next place of an anchor's literal, and from where on it can be reached. Not yet known as long as the place
  // lies behind us.
  struct Window {
    const char* from = nullptr;
    const char* place = nullptr;
    const char* required = nullptr;  // the next place of the other literal
  };

  bool attempt(const char* begin, const char* at, std::string_view& match);
  const char* nextCandidate(const char* at);
  void findWindow(const TrexAnchor& anchor, const char* at, Window& window);
  const char* find(const TrexLiteral& literal, const char* at) const;

  TrexExpression& e_;
  const char* at_;
  const char* end_;
  TextIndex* index_;
  std::uint32_t search_;
  std::array<Window, kMaxAnchors> windows_{};
  std::size_t reach_ = 32;  // how far the next window looks for reasons that there is none
};
