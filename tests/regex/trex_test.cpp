#include "regex/trex.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <memory>
#include <string>
#include <vector>

#include "regex/trex_literal.h"

namespace {

using Expression = std::unique_ptr<TrexExpression, void (*)(TrexExpression*)>;

Expression compile(const std::string& pattern) {
  return {trex_compile(pattern.c_str(), nullptr), trex_free};
}

// The message that `pattern` is refused with, "" if it compiles.
std::string messageOf(const std::string& pattern) {
  const char* error = "";
  const Expression expression(trex_compile(pattern.c_str(), &error), trex_free);
  EXPECT_EQ(expression != nullptr, *error == '\0') << pattern;
  return error;
}

// "begin-end" of the leftmost match in `text`, "none" if there is none.
std::string search(const std::string& pattern, const std::string& text) {
  const Expression expression = compile(pattern);
  const char* begin = nullptr;
  const char* end = nullptr;
  if (expression == nullptr || trex_search(expression.get(), text.c_str(), &begin, &end) == 0) return "none";
  return std::to_string(begin - text.c_str()) + "-" + std::to_string(end - text.c_str());
}

std::string repeated(const std::string& piece, int times) {
  std::string text;
  while (times-- > 0)
    text += piece;
  return text;
}

TEST(Trex, RefusesWithTheMessageOfTheFirstFault) {
  const struct {
    const char* message;
    std::vector<const char*> patterns;
  } rows[] = {
      {"unexpected character", {"", "\\", "a\\", "[a\\", "[a-\\", "a)", "a**"}},
      {"expected paren", {"()", "(?x)", "(a", "(a**)", "[ab", "[a-b", "a{1,", "a{1,2"}},
      {"letter expected", {"^", "a|", "(", "[", "[^", "\n", "\xe9", "[a-\xe9]"}},
      {"empty class", {"[]a]", "[^]a]"}},
      {"unfinished range", {"[a-]", "[\\d-]"}},
      {"invalid range", {"[a-", "[\\d-", "[a-\x01]"}},
      {"cannot use character classes in ranges", {"[\\d-z]", "[\\d-\xe9]"}},
      {"number expected", {"a{", "a{,2}", "*{"}},
      {", or } expected", {"a{1", "a{1.5}"}},
      {"overflow in numeric constant", {"a{1234567890}", "a{0,0000000001}"}},
      {"", {"a{000000001,999999999}", "{,2}", ")", "*a|*|+", "a||b", "a*{2}", "[-a]", "[a-c-e]", "[a-\\]]", "\\\n"}},
  };
  for (const auto& row : rows) {
    for (const char* pattern : row.patterns)
      EXPECT_EQ(messageOf(pattern), row.message) << pattern;
  }
}

TEST(Trex, RangeCheckComparesTheNodeIndex) {
  EXPECT_EQ(messageOf("[z-a]"), "");
  EXPECT_EQ(search("[z-a]", "z-am"), "none");
  EXPECT_EQ(messageOf(repeated("a", 70) + "[0-9]"), "invalid range");
  EXPECT_EQ(messageOf(repeated("a", 70) + "[a-A]"), "invalid range");
  EXPECT_EQ(messageOf(repeated("a", 70) + "[a-z]"), "");
  // Node 0 is the whole pattern. 46 more and the class make the first item node 48, which is the byte '0'.
  const struct {
    const char* piece;
    int nodes;
  } rows[] = {{"a", 1},  {".", 1},    {"$", 1},    {"\\b", 1}, {"\\d", 1}, {"(a)", 2},    {"(?:a)", 2},
              {"a*", 2}, {"a{9}", 2}, {"[ab]", 3}, {"a|", 2},  {"^a|", 3}, {"[a\\s]", 3}, {"[a-z]", 3}};
  for (const auto& row : rows) {
    const std::string before = repeated(row.piece, 45 / row.nodes) + repeated("a", 46 - 45 / row.nodes * row.nodes);
    EXPECT_EQ(messageOf(before + "[a-0]"), "") << before;
    EXPECT_EQ(messageOf("a" + before + "[a-0]"), "invalid range") << before;
  }
}

TEST(Trex, FindsTheLeftmostMatch) {
  const struct {
    const char* pattern;
    const char* text;
    const char* match;
  } rows[] = {
      // A repetition stops where the next element matches and gives nothing back.
      {"a*a", "aaa", "0-2"},
      {"\".*\"", "x = \"a\" + \"b\"", "4-7"},
      {"\\s*\\(", "  (", "0-3"},
      {"\\w+\\s*=\\s*[\\w\\.]+;", "var a = b.c;", "4-12"},
      {"a*?", "aa?", "0-3"},
      {"a{3,2}", "aaa", "none"},
      {"a{65536}b", "ab", "1-2"},  // only 16 bits of a bound are kept
      {"(a*)*b", "aac", "none"},
      // An alternation keeps to the first alternative that matches by itself.
      {"(a|ab)c", "abc", "none"},
      {"^b|^a|c", "abc", "0-1"},
      // Only `$` tests for the end; an element may take the byte there, and a repetition goes no further.
      {".", "", "none"},
      {"a$", "aba", "2-3"},
      {"b[^a]", "ab", "1-3"},
      {"b\\W.", "ab", "none"},
      {".{3}", "ab", "none"},
      {"\\S*", "ab", "0-2"},
      // Boundaries lie between white space and the rest, one byte ahead of where one would look for them.
      {"\\bx", "y x", "none"},
      {"x\\b", "xy z", "0-1"},
      {"\\b.", " ab c", "0-1"},
      // Bytes above 127 are in no class letter but the negative ones.
      {"[\\w\\p\\s\\c]", "\xe9\xff", "none"},
      {"[^a]\\W", "a\xe9\xff", "1-3"},
      {"\\\xe9+", "a\xe9\xe9", "1-3"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(search(row.pattern, row.text), row.match) << row.pattern << " in " << row.text;
}

TEST(Trex, RepetitionEndsAfter65536Rounds) {
  const std::string text(70000, 'a');
  for (const char* pattern : {"a*", "a+", "a{9,}", "a{65535}", "a{0,65535}"}) {
    EXPECT_EQ(search(pattern, text), "0-65536") << pattern;
  }
  EXPECT_EQ(search("a{0,65534}", text), "0-65534");
}

TEST(Trex, GroupsAreRecordedOnTheirFirstEntryAndKept) {
  const struct {
    const char* pattern;
    std::vector<const char*> texts;  // searched one after the other
    const char* groups;              // after the last one
  } rows[] = {
      {"(\\w+)\\.(\\w+)", {"x = dev.get(1)"}, "[dev.get][dev][get]"},
      {"(a)|(b)", {"b"}, "[b]null[b]"},
      {"x(a)|(b)", {"b"}, "[b]nullnull"},  // group 1 is not reached, so it is not the turn of group 2
      {"x(a)|b", {"xa", "b"}, "[b][a]"},
      {"(a)|b", {"a", "b"}, "[b]null"},
      {"x(a)?", {"xa", "xb"}, "[x]null"},
      {"xa(b)", {"xab", "c"}, "null[b]"},
      // A round that takes nothing can still be the turn of a group that the round before it has not recorded.
      {"((b|(c)){2}(a)|a?)*", {"ba"}, "[][][b]null[a]"},
      {"(?:(?:b{2})?){2}(^(b)|(a))", {"ba"}, "[b][a][b][a]"},
  };
  for (const auto& row : rows) {
    const Expression expression = compile(row.pattern);
    for (const char* text : row.texts)
      trex_search(expression.get(), text, nullptr, nullptr);
    std::string groups;
    TrexSubMatch group{};
    for (int n = 0; trex_getsubexp(expression.get(), n, &group) != 0; ++n) {
      const std::string bytes(group.begin == nullptr ? "" : group.begin, static_cast<std::size_t>(group.length));
      groups += group.begin == nullptr ? "null" : "[" + bytes + "]";
    }
    EXPECT_EQ(groups, row.groups) << row.pattern;
    EXPECT_EQ(trex_getsubexp(expression.get(), -1, &group), 0);
  }
}

TEST(Trex, TellsTheHostTheLastExpressionAndTheEndOfTheText) {
  trex_free(nullptr);
  const Expression expression = compile("b");
  EXPECT_EQ(g_exp, expression.get());
  EXPECT_EQ(trex_compile("(", nullptr), nullptr);
  EXPECT_EQ(g_exp, nullptr);
  for (const char* text : {"", "a", "abc"}) {
    trex_search(expression.get(), text, nullptr, nullptr);
    EXPECT_EQ(g_limitAddress, text + std::char_traits<char>::length(text)) << text;
  }
}

TEST(Trex, DeepAndLongPatternsDoNotUseUpTheStack) {
  constexpr int kMany = 100000;
  EXPECT_EQ(messageOf(repeated("(", kMany)), "letter expected");
  EXPECT_EQ(search(repeated("(", 1000) + "a" + repeated(")", 1000), "ba"), "1-2");
  EXPECT_EQ(search(repeated("(", kMany) + "a" + repeated(")", kMany), "ba"), "none");  // deeper than a match may go
  EXPECT_EQ(search(repeated("(a)", kMany), repeated("a", kMany)), "0-" + std::to_string(kMany));
  EXPECT_EQ(search(repeated("a|", 1000) + "b", "cb"), "1-2");
  EXPECT_EQ(search(repeated("a|", 20000) + "a", "cba"), "2-3");
  EXPECT_EQ(search(repeated("a+", 3000), repeated("a", 3000)), "0-3000");
}

// An application can hold thousands of short scripts.
TEST(TextIndex, OfAShortTextTakesLittleMemory) {
  const auto peakKiB = [] {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
  };
  const std::string text(100, 'x');
  const long before = peakKiB();
  std::size_t room = 1 << 20;
  std::vector<TextIndex> indexes(2000, TextIndex(text, room));
  EXPECT_LT(peakKiB() - before, 100L << 10);
  EXPECT_EQ(indexes.back().find("xxx", 97, text.size()), 97U);
}

}  // namespace
