// The engine against the slow matcher: every small pattern and many larger ones, over every small text. Each pattern is
// compiled once and meets its texts one after the other, so what groups keep from an earlier text is compared as well.
// All bytes lie in heap blocks of their exact size: the address sanitizer notices any look too far.

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "SlowMatcher.h"
#include "regex/trex_find.h"

namespace {

using Found = SlowPattern::Found;  // both null: nothing found

// All strings over `alphabet` of up to `most` bytes, the shorter ones first.
std::vector<std::string> allStrings(const std::string& alphabet, std::size_t most) {
  std::vector<std::string> all{""};
  for (std::size_t i = 0; all[i].size() < most; ++i) {
    for (const char byte : alphabet)
      all.push_back(all[i] + byte);
  }
  return all;
}

// The first and the last byte of a text that is searched inside are not part of the subject.
enum class Call { kMatch, kSearch, kSearchInside };
constexpr const char* kCalls[] = {"trex_match of ", "trex_search of ", "trex_searchrange inside "};

Found ask(SlowPattern& pattern, Call call, std::string_view text) {
  if (call == Call::kMatch) return pattern.match(text) ? Found{text.data(), text.data() + text.size()} : Found{};
  const std::size_t margin = call == Call::kSearchInside ? 1 : 0;
  return pattern.search(text, margin, text.size() - margin);
}

Found ask(TrexExpression* pattern, Call call, std::string_view text) {
  const char* const end = text.data() + text.size();
  if (call == Call::kMatch) return trex_match(pattern, text.data()) != 0 ? Found{text.data(), end} : Found{};
  Found found;
  const int answer = call == Call::kSearch
                         ? trex_search(pattern, text.data(), &found.first, &found.second)
                         : trex_searchrange(pattern, text.data() + 1, end - 1, &found.first, &found.second);
  return answer != 0 ? found : Found{};
}

Found groupOf(TrexExpression* pattern, std::size_t n) {
  TrexSubMatch group{"not written", 0};
  trex_getsubexp(pattern, static_cast<int>(n), &group);
  return {group.begin, group.begin + group.length};
}

std::string describe(std::string_view text, const Found& found) {
  if (found.first == nullptr) return "none";
  if (found.first < text.data() || found.first > text.data() + text.size()) return "in an earlier text";
  return std::to_string(found.first - text.data()) + " to " + std::to_string(found.second - text.data());
}

// Of the patterns, one in so many is tried. An emulator takes twenty times as long.
#ifdef TARVO_EMULATED
constexpr std::uint32_t kEvery = 13;
#else
constexpr std::uint32_t kEvery = 1;
#endif

// The patterns are dealt out to this many tests of each kind, which can run at the same time.
constexpr std::uint32_t kShares = 6;

class TrexDifferential : public testing::TestWithParam<std::uint32_t> {
 protected:
  TrexDifferential() {
    for (const std::string& text : allStrings("ab ", 5)) {
      if (text.size() < 5) texts_.push_back(allocate(text, 1));
      if (text.size() > 2) insideTexts_.push_back(allocate(text, 0));
    }
    for (const char* text : {"aaaaa", "ab abab", "a-b b-a", "(a)(b)", "(|)", "*+?", ".[]", "^$", "\\", "{,}", "2,22",
                             "BSw", "A_2-a", "a\tb\na", "\x01\x7f", "\x80\xff"}) {
      texts_.push_back(allocate(text, 1));
    }
    // Long texts in which little matches: a search that skips starts must leave what trying them would have left.
    for (std::size_t length = 9; length < 100; length += 7) {
      std::string text(length, length % 2 == 0 ? 'x' : ' ');
      for (std::size_t at = length / 2; at < length; at += length / 3)
        text.replace(at, 3, "ab a", at % 4, 3);
      texts_.push_back(allocate(text, 1));
      insideTexts_.push_back(allocate(text, 0));
    }
  }

  // Compiles `pattern` on both sides and runs it over `count` texts of each kind, other ones at each call.
  void compare(const std::string& pattern, int count) {
    if (HasFailure()) return;  // the first pattern that differs is the smallest one
    // By a hash: one in every so many would be those with the same last letter.
    if ((asked_++ * 2654435761U >> 16) % (kEvery * kShares) != GetParam()) return;
    pattern_ = "pattern " + testing::PrintToString(pattern);
    std::string slowError = "none";
    std::optional<SlowPattern> slow = SlowPattern::compile(pattern, &slowError);
    const char* error = "none";
    // The copy is gone once the pattern is compiled.
    const std::unique_ptr<TrexExpression, void (*)(TrexExpression*)> engine(
        trex_compile(std::vector<char>(pattern.c_str(), pattern.c_str() + pattern.size() + 1).data(), &error),
        trex_free);
    ++patterns_;
    ASSERT_EQ(error, slowError) << pattern_;
    ASSERT_EQ(engine != nullptr, slow.has_value()) << pattern_;
    if (!slow) return;
    ++compiled_;
    finding_.reset(trex_compile(pattern.c_str(), nullptr));
    searching_.reset(trex_compile(pattern.c_str(), nullptr));
    ASSERT_EQ(static_cast<std::size_t>(trex_getsubexpcount(engine.get())), slow->groups().size()) << pattern_;
    for (; count > 0 && !HasFailure(); --count, ++turn_) {
      compareCall(*slow, engine.get(), Call::kMatch, texts_[turn_ % texts_.size()]);
      compareCall(*slow, engine.get(), Call::kSearch, texts_[turn_ % texts_.size()]);
      compareCall(*slow, engine.get(), Call::kSearchInside, insideTexts_[turn_ % insideTexts_.size()]);
    }
  }

  // Patterns of which few compile would compare little.
  void TearDown() override { EXPECT_GT(compiled_, patterns_ / 4); }

 private:
  std::string_view allocate(const std::string& bytes, std::size_t terminators) {
    blocks_.emplace_back(bytes.c_str(), bytes.c_str() + bytes.size() + terminators);
    return {blocks_.back().data(), bytes.size()};
  }

  void compareCall(SlowPattern& slow, TrexExpression* engine, Call call, std::string_view text) {
    const auto check = [&](const char* what, std::size_t n, const Found& actual, const Found& expected) {
      if (actual == expected) return;
      ADD_FAILURE() << pattern_ << ", " << kCalls[static_cast<int>(call)] << testing::PrintToString(std::string(text))
                    << ": " << what << n << " is " << describe(text, actual) << ", expected "
                    << describe(text, expected);
    };
    const Found expected = ask(slow, call, text);
    check("answer ", 0, ask(engine, call, text), expected);
    for (std::size_t n = 0; n < slow.groups().size(); ++n)
      check("group ", n, groupOf(engine, n), slow.groups()[n]);
    if (call != Call::kMatch) compareFinder(call, text, check);
  }

  // The engine's own search, which skips starts: the same matches as those of one search behind the other. It runs on
  // an expression of its own, since it leaves other groups.
  template <typename Check>
  void compareFinder(Call call, std::string_view text, const Check& check) {
    const std::size_t margin = call == Call::kSearchInside ? 1 : 0;
    const char* at = text.data() + margin;
    const char* const end = text.data() + text.size() - margin;
    TrexFinder finder(*finding_, at, end, nullptr);
    for (std::size_t n = 0;; ++n) {
      Found expected;
      if (trex_searchrange(searching_.get(), at, end, &expected.first, &expected.second) == 0) expected = {};
      std::string_view match;
      const bool isThere = finder.next(match);
      const Found actual = isThere ? Found{match.data(), match.data() + match.size()} : Found{};
      check("match ", n, actual, expected);
      if (expected.first == expected.second || actual != expected) return;
      at = expected.second;
    }
  }

  std::vector<std::vector<char>> blocks_;
  std::vector<std::string_view> texts_;
  std::vector<std::string_view> insideTexts_;
  using Expression = std::unique_ptr<TrexExpression, void (*)(TrexExpression*)>;
  Expression finding_{nullptr, trex_free};
  Expression searching_{nullptr, trex_free};
  std::string pattern_;
  std::size_t turn_ = 0;
  std::uint32_t asked_ = 0;
  int patterns_ = 0;
  int compiled_ = 0;
};

// Patterns that mostly compile, from a small grammar. Every other one is plain, little more than nested groups and
// repetitions; the others have all kinds of elements and, now and then, one byte that disturbs the grammar.
class RandomPattern {
 public:
  std::string next() {
    isPlain_ = !isPlain_;
    std::string pattern = list(3);
    if (!isPlain_ && below(8) == 0) {
      const std::size_t at = below(pattern.size() + 1);
      pattern.insert(at, oneOf(kDisturbing));
    }
    return pattern;
  }

 private:
  using Pieces = std::vector<const char*>;
  std::size_t below(std::size_t bound) { return random_() % bound; }
  const char* oneOf(const Pieces& pieces) { return pieces[below(pieces.size())]; }

  std::string list(int depth) {
    std::string pattern = below(12) == 0 ? "^" : "";
    for (std::size_t left = 1 + below(isPlain_ ? 2 : 4); left > 0; --left) {
      if (depth > 0 && below(isPlain_ ? 2 : 3) == 0) {
        pattern += oneOf(kOpening);
        pattern += list(depth - 1) + ")";
      } else {
        pattern += oneOf(isPlain_ || below(2) == 0 ? kPlain : kSpecial);
      }
      if (below(3) == 0) pattern += oneOf(kQuantifiers);
    }
    if (below(3) == 0) pattern += "|" + list(depth);
    return pattern;
  }

  const Pieces kOpening = {"(", "(", "(", "(?:"};
  const Pieces kPlain = {"a", "a", "b", "."};
  const Pieces kSpecial = {" ",    "$",     "\\b",    "\\B",   "\\s",    "\\S",  "\\w", "\\D",    "\\c",      "[ab]",
                           "[^a]", "[a-b]", "[^ -a]", "[b-a]", "[\\S-]", "[-b]", "\\n", "[^\\S]", "[\\s\\w]", "\\("};
  const Pieces kQuantifiers = {"*",   "*",   "*",     "+",    "+",     "?",     "?",
                               "{2}", "{0}", "{0,1}", "{1,}", "{2,3}", "{3,2}", "{0,65536}"};
  const Pieces kDisturbing = {"(",  ")", "|", "*", "+", "?", "[", "]", "^",    "$",
                              "\\", "-", "{", "}", ",", "2", ":", "S", "\x01", "\xff"};
  bool isPlain_ = false;
  std::mt19937 random_;  // the default seed; no two calls in one expression: the same patterns always
};

TEST_P(TrexDifferential, ShortPatterns) {
  for (const std::string& pattern : allStrings("ab()|*+?.[]^$\\-{},2:wSB", 4)) {
    compare(pattern, pattern.size() < 4 ? 256 : 8);
  }
}

TEST_P(TrexDifferential, LongerPatternsOfFewLetters) {
  for (const std::string& pattern : allStrings("ab()|*", 7))
    compare(pattern, 4);
  for (const std::string& pattern : allStrings("a[]^-\\d", 6))
    compare(pattern, 4);
  for (const std::string& pattern : allStrings("a{}12,?", 6))
    compare(pattern, 4);
}

TEST_P(TrexDifferential, RandomPatterns) {
  RandomPattern random;
  for (int i = 0; i < 400000; ++i)
    compare(random.next(), 8);
}

INSTANTIATE_TEST_SUITE_P(Share, TrexDifferential, testing::Range(0U, kShares));

// Repetitions end after 65,536 rounds. Searches that remember how far one went must know where a later one is cut.
TEST(TrexFinder, RunsLongerThanOneRepetition) {
  constexpr std::ptrdiff_t kStarts = 14;
  const std::string run(65530, 'a');
  std::string words;
  while (words.size() < std::size_t{3} * 65540)
    words += "ab.";
  for (const std::string& text : {run + "aaaaab", run + "aaaaaaaaab", "a.bb." + run + run + "aaaaaaaaaaaa.c;",
                                  run + run + std::string(17, 'a') + "b", words + ";"}) {
    for (const char* pattern :
         {"a*b", "[ab]+c", "(a)*b", "(aa*)*b", "(a+){2}b", "((\\w+)\\.*)*;", "a.*b", "(\\w*c)*;", "\\w*\\W"}) {
      const std::unique_ptr<TrexExpression, void (*)(TrexExpression*)> expression(trex_compile(pattern, nullptr),
                                                                                  trex_free);
      const char* const begin = text.data();
      const char* const end = begin + text.size();
      const std::string_view none = std::string_view(text).substr(0, 0);
      std::string_view match;
      if (!TrexFinder(*expression, begin, end, nullptr).nextIn(begin, begin + kStarts, match)) match = none;
      const char* start = begin;
      const char* matchEnd = nullptr;
      for (; matchEnd == nullptr && start < begin + kStarts; ++start)
        matchEnd = trexAttempt(*expression, begin, end, start, false);
      const std::string_view expected =
          matchEnd == nullptr ? none : std::string_view(start - 1, static_cast<std::size_t>(matchEnd - start + 1));
      EXPECT_EQ(match.data() - begin, expected.data() - begin)
          << pattern << " at the end " << text.substr(text.size() - 4);
      EXPECT_EQ(match.size(), expected.size()) << pattern << " at the end " << text.substr(text.size() - 4);
    }
  }
}

TEST(TextIndex, FindsWhatASearchFinds) {
  std::mt19937 random;
  for (int round = 0; round < 200; ++round) {
    const bool isOfTwoLetters = round % 4 == 0;
    std::string text;
    while (text.size() < 3000)
      text += "abcdefgh $.("[random() % (isOfTwoLetters ? 2 : round < 100 ? 12 : 3)];
    std::size_t room = round % 8 == 0 ? 4 * text.size() : 20 * text.size();
    const std::size_t before = room;
    TextIndex index(text, room);
    for (int i = 0; i < (isOfTwoLetters ? 400 : 50); ++i) {
      const std::size_t at = random() % text.size();
      const std::string literal = text.substr(random() % text.size(), 1 + random() % 40) + (i % 5 == 0 ? "a" : "");
      const std::size_t to = at + random() % (text.size() - at + 1);
      const std::size_t expected = text.substr(0, to).find(literal, at);
      ASSERT_EQ(index.find(literal, at, to), expected) << literal << " in " << text;
      const TrexLiteral searched(literal);
      const char* const end = text.data() + to;
      const char* const place = expected == std::string::npos ? end : text.data() + expected;
      ASSERT_EQ(searched.find(text.data() + at, end, nullptr), place) << literal << " in " << text;
    }
    if (isOfTwoLetters) {
      EXPECT_LE(room, before - 3 * text.size()) << "longer pieces were indexed";
    }
  }
}

}  // namespace
