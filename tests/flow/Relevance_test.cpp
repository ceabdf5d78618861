// Which scripts are read: by their words, and by the globals that they share with what is read.

#include "flow/Relevance.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using flow::Relevance;

TEST(Relevance, LargeScriptsAreReadForTheirWordsOnly) {
  struct Row {
    const char* text;
    Relevance expected;
    Relevance ofLibrary;
  };
  const std::vector<Row> rows = {
      {"f('MORVANE-NAVERTIX-AUDIO');", Relevance::own, Relevance::own},
      {"f('player');", Relevance::own, Relevance::none},
      {"x.player = 1;", Relevance::none, Relevance::none},
      {"f('tv'); tv.GetX();", Relevance::none, Relevance::none},
      {"d.getElementById('tv')", Relevance::own, Relevance::own},
      {"player.GetX();", Relevance::own, Relevance::own},
      {"d.getElementById('player')", Relevance::own, Relevance::own},
      {"$('#player')", Relevance::own, Relevance::own},
      {"d.getElementsByTagName('object')", Relevance::own, Relevance::none},
      {"if (typeof a === 'object') b();", Relevance::none, Relevance::none},
      {"window.Helper = function () {};", Relevance::shared, Relevance::none},
      {"a.onload = function () { AppShell.go(); };", Relevance::shared, Relevance::none},
      {"f(function AppShell() { AppShell.go(); });", Relevance::none, Relevance::none},
      {"export const unrelated = 1;", Relevance::shared, Relevance::none},
      {"var alone = 1;", Relevance::none, Relevance::none},
  };
  const std::string page = "<script>\nvar AppShell = {};\nHelper(document.getElementById('player'));</script>";
  const std::string own = "import {unrelated} from './lib/bigger.js';";
  const std::string filling = "\n/*" + std::string(70'000, ' ') + "*/";
  for (const Row& row : rows) {
    const std::string text = row.text + filling;
    const auto read = [&](bool isLibrary) {
      return flow::relevanceOf({{page, true, false, {}}, {own, false, false, {}}, {text, false, isLibrary, "bigger"}},
                               {"MORVANE-NAVERTIX-AUDIO"}, {"player", "tv"})[2];
    };
    EXPECT_EQ(read(false), row.expected) << row.text;
    EXPECT_EQ(read(true), row.ofLibrary) << row.text;
  }
  const std::string small = "var unrelated = 1;";
  EXPECT_EQ(flow::relevanceOf({{small, false, false, {}}}, {}, {})[0], Relevance::own) << "small ones are always read";
}

}  // namespace
