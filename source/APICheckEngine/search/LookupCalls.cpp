// Test: tests/APICheckEngine/Search_test.cpp, against the plain search.

#include "APICheckEngine/search/LookupCalls.h"

#include <unordered_map>

#include "APICheckEngine/CallText.h"
#include "platform/Limits.h"

namespace FlashEngine_1_00::detail {
namespace {

LookupCalls findCalls(const NamePattern& pattern, const std::string& id, SourceIndex& source, std::size_t mostEqual) {
  LookupCalls calls;
  calls.text = source.text();
  std::unordered_map<std::string_view, std::size_t> known;  // positions of candidates
  std::vector<std::size_t> finds;                           // of each candidate
  for (NameMatches at(pattern, id, calls.text, source.forSearchOf(calls.text.size())); at.next();) {
    const auto [place, isNew] = known.try_emplace(at.view(), calls.candidates.size());
    if (isNew) {
      const std::string found = at.match();
      calls.candidates.push_back({found, found.substr(found.find('.') + 1), holdsBuiltIn(found)});
      finds.push_back(0);
    }
    const std::size_t equal = finds[place->second]++;
    if (equal < mostEqual) calls.finds.push_back({place->second, at.view()});
    if (equal < kMaxEqualRecords && !calls.candidates[place->second].isBuiltIn) {
      calls.judged.push_back({place->second, at.view()});
    }
  }
  return calls;
}

}  // namespace

const LookupCalls& LookupCallFinder::callsOn(const std::string& id, SourceIndex& source) {
  const auto [known, isNew] = known_.try_emplace({id, &source});
  if (isNew) known->second = findCalls(pattern_, id, source, mostEqual_);
  return known->second;
}

}  // namespace FlashEngine_1_00::detail
