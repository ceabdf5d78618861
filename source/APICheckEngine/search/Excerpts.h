#pragma once

#include <string_view>
#include <vector>

// The pieces of a source in which accesses to elements are looked for.

namespace FlashEngine_1_00::detail {

// A piece of a source around a "$(" , "$_" or "document", and how many of these made the same piece.
struct Excerpt {
  std::string_view text;
  int hits;
};

// The excerpts of `source` (zero-terminated, no zero byte inside), in order, as views into it. An excerpt reaches from
// the blank before its hit to the blank after the next 430 bytes. Where that first blank stands before or behind the
// single "=" that assigns to a variable, it starts at the variable.
std::vector<Excerpt> findExcerpts(std::string_view source);

}  // namespace FlashEngine_1_00::detail
