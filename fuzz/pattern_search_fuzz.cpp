// A pattern, a line feed and a text: the engine, its finder and the slow matcher must agree on messages, matches and
// groups. Both lie in heap blocks of their exact size.

#include <cstring>

#include "Support.h"
#include "regex/SlowMatcher.h"
#include "regex/trex_find.h"

namespace {

using Found = SlowPattern::Found;
using Expression = std::unique_ptr<TrexExpression, void (*)(TrexExpression*)>;

Expression compile(const std::string& pattern, const char** error) {
  const std::vector<char> copy(pattern.c_str(), pattern.c_str() + pattern.size() + 1);
  return {trex_compile(copy.data(), error), trex_free};
}

void compareGroups(TrexExpression* engine, const SlowPattern& slow) {
  fuzz::require(trex_getsubexpcount(engine) == static_cast<int>(slow.groups().size()), "as many groups");
  for (std::size_t n = 0; n < slow.groups().size(); ++n) {
    TrexSubMatch group{};
    trex_getsubexp(engine, static_cast<int>(n), &group);
    fuzz::require(Found(group.begin, group.begin + group.length) == slow.groups()[n], "the same groups");
  }
}

// All matches in the first `length` bytes of `text`, one search behind the other. The byte behind them can be seen.
void compareSearches(TrexExpression* engine, TrexExpression& finding, SlowPattern& slow, std::string_view text,
                     std::size_t length) {
  const char* const end = text.data() + length;
  TrexFinder finder(finding, text.data(), end, nullptr);
  for (const char* at = text.data();;) {
    const Found expected = slow.search(text, static_cast<std::size_t>(at - text.data()), length);
    Found searched;
    (void)trex_searchrange(engine, at, end, &searched.first, &searched.second);
    fuzz::require(searched == expected, "the same search result");
    compareGroups(engine, slow);
    std::string_view match;
    const bool isThere = finder.next(match);
    const Found found = isThere ? Found(match.data(), match.data() + match.size()) : Found();
    fuzz::require(found == expected, "the same match of the finder");
    if (expected.first == expected.second) return;
    at = expected.second;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto [pattern, text] = fuzz::splitAt('\n', fuzz::viewOf(data, size));
  std::string slowError = "none";
  std::optional<SlowPattern> slow = SlowPattern::compile(pattern, &slowError);
  const char* error = "none";
  const Expression engine = compile(pattern, &error);
  fuzz::require(slowError == error && slow.has_value() == (engine != nullptr), "both compile the pattern, or neither");
  if (engine == nullptr) return 0;

  const std::vector<char> block(text.c_str(), text.c_str() + text.size() + 1);
  const std::string_view subject(block.data(), text.size());
  fuzz::require((trex_match(engine.get(), block.data()) != 0) == slow->match(subject), "the same answer to a match");
  compareGroups(engine.get(), *slow);

  const Expression finding = compile(pattern, nullptr);
  compareSearches(engine.get(), *finding, *slow, subject, subject.size());
  if (!subject.empty()) compareSearches(engine.get(), *finding, *slow, subject, subject.size() - 1);
  return 0;
}
