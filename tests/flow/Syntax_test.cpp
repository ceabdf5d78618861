// The parser's bounds. What it makes of scripts is tested by what is followed in them.

#include "flow/Syntax.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

std::string repeated(const std::string& text, int times) {
  std::string all = "function f() {}\n";
  for (int i = 0; i < times; ++i)
    all += text;
  return all;
}

// What is no script costs the square of its size: the parser is stopped. Where it loses what the root has, there is no
// tree, rather than one whose places are wrong.
TEST(Syntax, GivesUpOnWhatIsNoScript) {
  struct Row {
    std::string text;
    std::uint64_t tokens;
    std::uint64_t work;
  };
  const flow::ParseLimits usual;
  const std::vector<Row> rows = {
      {repeated("\u00ff\u00fe\u00ed\u00a0\u0080", 100'000), usual.tokens, 500'000},
      {repeated("a;\n", 20'000), 20'000, usual.work},
      {repeated("a?", 70'000), usual.tokens, usual.work},
      {repeated("<a>", 70'000), usual.tokens, usual.work},
  };
  for (const Row& row : rows) {
    flow::ParseLimits limits;
    limits.tokens = row.tokens;
    limits.work = row.work;
    const flow::Tree tree = flow::parseScript(row.text, limits);
    EXPECT_FALSE(tree.isWhole) << row.text.substr(16, 10);
    EXPECT_TRUE(tree.nodes.empty()) << row.text.substr(16, 10);
    EXPECT_TRUE(flow::parseScript("f();", limits).isWhole) << "after " << row.text.substr(16, 10);
  }
}

}  // namespace
