#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "regex/Pattern.h"

namespace FlashEngine_1_00::detail {

// Finds the accesses to elements in the excerpts of one source.
class ExcerptAccesses {
 public:
  // The matches of `pattern`, which must outlive the finder, as must the source.
  ExcerptAccesses(const Pattern& pattern, std::string_view source)
      : pattern_(pattern), cursor_(pattern, source, nullptr), searchedTo_(source.data()) {}

  // The accesses in the next excerpt, in order, as positions in texts(). Excerpts come in the order of their places.
  std::vector<std::size_t> in(std::string_view excerpt);

  // The distinct texts of the accesses found so far.
  const std::vector<std::string_view>& texts() const { return texts_; }

 private:
  // An access in the source. They lie inside each other: "a.b = $('tv')", "b = $('tv')", "= $('tv')".
  struct Place {
    std::string_view text;
    std::size_t access;  // position in texts_; kUnknown as long as nobody asked
  };
  static constexpr std::size_t kUnknown = static_cast<std::size_t>(-1);

  void findPlaces(const char* begin, const char* end);
  void addCut(std::string_view rest, std::vector<std::size_t>& accesses);
  std::size_t accessOf(std::string_view text);

  const Pattern& pattern_;
  MatchCursor cursor_;
  const char* searchedTo_;     // the places before it are in places_, from the last gap between excerpts on
  std::vector<Place> places_;  // in the order in which they begin, at most one for each beginning
  std::unordered_map<std::string, std::size_t> positions_;  // of texts
  std::vector<std::string_view> texts_;                     // keys of positions_
};

}  // namespace FlashEngine_1_00::detail
