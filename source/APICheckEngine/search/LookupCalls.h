#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "APICheckEngine/CallText.h"
#include "APICheckEngine/search/SourceIndex.h"

namespace FlashEngine_1_00::detail {

// The calls on look-ups of one element in one source.
struct LookupCalls {
  struct Candidate {
    std::string text;      // as matched: `("tv").GetModel(`
    std::string callText;  // what follows the look-up in it
    bool isBuiltIn;        // whether it holds the name of a built-in function
  };
  struct Find {
    std::size_t candidate;   // its position
    std::string_view place;  // in the source
  };
  std::string_view text;  // the source
  std::vector<Candidate> candidates;
  std::vector<Find> finds;   // in order; of equal ones not more than are asked for
  std::vector<Find> judged;  // those that are no built-in calls, of equal ones kMaxEqualRecords
};

// Finds them. The plain search goes through the source for every look-up of an element; here it does once for all
// look-ups of that element, since what it finds depends on the element and the source alone.
class LookupCallFinder {
 public:
  // `mostEqual`: how many finds of one candidate to keep.
  explicit LookupCallFinder(std::size_t mostEqual) : mostEqual_(mostEqual) {}

  // Those on look-ups of `id`, a word. Stay where they are.
  const LookupCalls& callsOn(const std::string& id, SourceIndex& source);

 private:
  const NamePattern pattern_ = callsOnLookUps();
  std::size_t mostEqual_;
  std::map<std::pair<std::string, const SourceIndex*>, LookupCalls> known_;
};

}  // namespace FlashEngine_1_00::detail
