// What expressions match, and what they leave alone.

#include "flow/Patterns.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace {

struct Row {
  const char* source;
  const char* flags;
  const char* text;
  const char* expected;  // the match and its groups, "-" for one that took no part
};

std::string matched(const Row& row) {
  const std::optional<flow::Pattern> pattern = flow::Pattern::of(row.source, row.flags);
  if (!pattern) return "broken";
  const std::string text = row.text;
  const std::optional<flow::PatternMatch> match = pattern->find(text);
  if (!match) return "none";
  std::string all;
  for (std::size_t i = 0; i < match->count(); ++i)
    all += (i ? "," : "") + (match->has(i) ? match->textOf(i, text) : "-");
  return all;
}

TEST(FlowPatterns, MatchAsInTheLanguage) {
  const std::vector<Row> rows = {
      {"b+", "", "abbc", "bb"},
      {"b+?", "", "abbc", "b"},
      {"(a|ab)(c|bcd)(d*)", "", "abcd", "abcd,a,bcd,"},
      {"^(\\w+)\\.(\\w+)$", "", "au.Set", "au.Set,au,Set"},
      {"(?:^|-)(\\w)", "g", "black-level", "b,b"},
      {"\\(([^)]*)\\)", "", "function (a, b) { (c); }", "(a, b),a, b"},
      {"(?<id>\\w)#", "", "ab#", "b#,b"},
      {"(a)|(b)", "", "b", "b,-,b"},
      {"a{2}", "", "aaa", "aa"},
      {"a{2,}b", "", "aabaaab", "aab"},
      {"^a{0,2}$", "", "aaa", "none"},
      {"x{", "", "x{", "x{"},
      {"[^]", "", "\n", "\n"},
      {"[\\d\\-x]+", "", "ab1-x", "1-x"},
      {"SET", "i", "set", "set"},
      {"^b$", "m", "a\nb\nc", "b"},
      {"\\bgo\\B", "", "go gone", "go"},
      {"a(?=b)", "", "acab", "a"},
      {"a(?!c)", "", "acab", "a"},
      {"(['\"])x\\1", "", "\"x' 'x'", "'x','"},
      {"\\/\\x41\\u0042", "", "/AB", "/AB"},
      {"(a*)*b", "", "aab", "aab,aa"},
      {"(?<=a)b", "", "ab", "broken"},
      {"\\p{L}", "u", "a", "broken"},
      {"(a", "", "a", "broken"},
      {"[a", "", "a", "broken"},
      {"*", "", "*", "broken"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(matched(row), row.expected) << row.source;
}

TEST(FlowPatterns, EndWhatTakesTooLong) {
  const std::string text(4'000, 'a');
  const auto start = std::chrono::steady_clock::now();
  for (const char* source : {"(a+)+b", "(a*)*b", "(a|a)*b", "a*a*a*a*b", "((a{9}){9}){9}b"}) {
    const std::optional<flow::Pattern> pattern = flow::Pattern::of(source, "");
    EXPECT_FALSE(pattern && pattern->find(text)) << source;
  }
  EXPECT_FALSE(flow::Pattern::of(std::string(100'000, '('), ""));
  EXPECT_FALSE(flow::Pattern::of("((((a{99}){99}){99}){99})", ""));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

}  // namespace
