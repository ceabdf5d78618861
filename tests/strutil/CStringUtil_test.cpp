#include "tarvo/CStringUtil.h"

#include <gtest/gtest.h>

TEST(CStringUtil, ReplacesEveryOccurrenceButNotWhatItPutIn) {
  struct Row {
    const char *text, *from, *to, *expected;
  } rows[] = {
      {"a b  c", " ", "", "abc"}, {"aaa", "aa", "a", "aa"}, {"x", "x", "xx", "xx"},
      {"abc", "", "-", "abc"},    {"((f(", "(", "", "f"},   {"Execute(Execute(", "Execute", "", "(("},
  };
  for (const Row& row : rows) {
    std::string text = row.text;
    EXPECT_EQ(CStringUtil().customReplace(text, row.from, row.to), row.expected) << row.text;
  }
}

TEST(CStringUtil, ExtensionIsWhatFollowsTheLastDot) {
  for (const auto& [path, extension] : std::vector<std::pair<std::string, std::string>>{
           {"a.min.js", "js"}, {"A.HTML", "HTML"}, {"noDot", ""}, {"ends.", ""}, {"/v1.2/main", "2/main"}}) {
    EXPECT_EQ(CStringUtil().findFileExtention(path), extension) << path;
  }
}

TEST(CStringUtil, MidStringTakesALengthAndSurvivesAnyRange) {
  struct Row {
    int start, length;
    const char* expected;
  } rows[] = {{4, 2, "de"}, {0, 3, "abc"}, {4, 99, "de)"}, {7, 1, ""}, {8, 1, ""}, {-1, 2, ""}, {1, -1, ""}};
  for (const Row& row : rows) {
    EXPECT_EQ(CStringUtil().findMidString("abc(de)", row.start, row.length), row.expected) << row.start;
  }
}

TEST(CStringUtil, TokenizerAppendsWhatStandsBetweenWholeDelimiters) {
  struct Row {
    const char *delimiter, *text;
    std::vector<std::string> expected;
  } rows[] = {
      {"#@x441#", "ActionPush#@x441#type#@x442#0", {"kept", "ActionPush", "type#@x442#0"}},
      {"/", "/tmp/0//app/", {"kept", "tmp", "0", "app"}},
      {"##", "a#b##c", {"kept", "a#b", "c"}},
      {"", "abc", {"kept", "abc"}},
      {"#", "", {"kept"}},
  };
  for (const Row& row : rows) {
    std::vector<std::string> tokens{"kept"};
    CStringUtil().stringTokenizer(row.delimiter, row.text, tokens);
    EXPECT_EQ(tokens, row.expected) << row.text;
  }
}
