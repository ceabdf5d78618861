#pragma once

#include <map>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "APICheckEngine/search/Excerpts.h"
#include "regex/Pattern.h"

namespace FlashEngine_1_00::detail {

// Finds the accesses to elements in the excerpts of one source.
class ExcerptAccesses {
 public:
  // The matches of `pattern` in the excerpts of `source`, in the order of their places. All must outlive the finder.
  ExcerptAccesses(const Pattern& pattern, std::string_view source, const std::vector<Excerpt>& excerpts)
      : pattern_(pattern), cursor_(pattern, source, nullptr), next_(excerpts.begin()), behind_(excerpts.end()) {}

  // The accesses in the next excerpt, in order, as positions in texts().
  std::vector<std::size_t> in(std::string_view excerpt);

  // The distinct texts of the accesses found so far, each as it stands somewhere in the source.
  const std::vector<std::string_view>& texts() const { return texts_; }

 private:
  // An access in the source. They can lie inside each other: "a.b = $('tv')", "b = $('tv')", "= $('tv')".
  struct Place {
    std::string_view text;
    std::size_t access;  // position in texts_; kUnknown as long as nobody asked
  };
  static constexpr std::size_t kUnknown = static_cast<std::size_t>(-1);

  void findPlaces(std::string_view excerpt);
  void search(const char* from, const char* to);
  void searchOn(const char* from, const char* to);
  void addCut(std::string_view rest, std::vector<std::size_t>& accesses);
  std::size_t accessOf(std::string_view text);

  const Pattern& pattern_;
  MatchCursor cursor_;
  std::vector<Excerpt>::const_iterator next_;    // the first whose beginning was not searched from
  std::vector<Excerpt>::const_iterator behind_;  // the last
  std::map<const char*, const char*> searches_;  // still to be made: from where, and up to where
  const char* searchedTo_ = nullptr;             // of the last search
  std::vector<Place> places_;                    // in the order in which they begin, at most one for each beginning
  std::unordered_map<std::string_view, std::size_t> positions_;  // of texts
  std::vector<std::string_view> texts_;
};

}  // namespace FlashEngine_1_00::detail
