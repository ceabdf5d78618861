// The parser's bounds. What it makes of scripts is tested by what is followed in them.

#include "flow/Syntax.h"

#include <gtest/gtest.h>

namespace {

// What is no script costs the square of its size: the parser is stopped.
TEST(Syntax, GivesUpOnWhatIsNoScript) {
  std::string text = "function f() {}\n";
  for (int i = 0; i < 100'000; ++i)
    text += "\u00ff\u00fe\u00ed\u00a0\u0080";
  flow::ParseLimits limits;
  limits.micros = 500'000;
  const flow::Tree tree = flow::parseScript(text, limits);
  EXPECT_FALSE(tree.isWhole);
  EXPECT_TRUE(tree.nodes.empty());
}

}  // namespace
