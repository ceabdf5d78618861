#include "platform/TimeBudget.h"
#include "support/EngineFixture.h"

namespace {

class FlashCalls : public EngineTest {
 protected:
  // The symbols and variables of plug-ins as the web sources would declare them, "CLASS#name" each.
  void declare(const Texts& symbols, const Texts& variables) {
    ASSERT_EQ(engine().Init(), RUN_SUCCESS);
    for (const std::string& symbol : symbols)
      append(engine().objectIdList, record(symbol));
    for (const std::string& variable : variables)
      append(engine().objectVariableList, record(variable));
  }

  static std::unique_ptr<SWFStateMentInfo> record(const std::string& expression) {
    auto made = std::make_unique<SWFStateMentInfo>();
    made->expression = std::make_unique<std::string>(expression);
    return made;
  }
};

TEST_F(FlashCalls, FindsCallsOnALookUpOfAPlugin) {
  struct Row {
    const char *symbol, *statement;
    Texts calls;
    RunResult code;
  } rows[] = {
      {"C#ext", "getObj(ext).GetVersion(1)", {"C#DummyObject.GetVersion(1( [Global] 0"}, RUN_SUCCESS},
      {"C#ext", "f('ext') . GetSerial()", {"C#DummyObject. GetSerial(( [Global] 0"}, RUN_UNDOCUMENTED_API},
      {"C#ext", "getObj(ext).toString()", {}, RUN_SUCCESS},
      {"C#ext", "getObj(other).GetSerial()", {}, RUN_SUCCESS},
      {"C#ext", "getObj(ext)", {}, RUN_SUCCESS},
      {"C#ext", "getObj(ext).a.Open(1)", {"null [Global] 0"}, RUN_SUCCESS},
      {"C#ext", "getObj(ext).Execute(\"Play\")", {"C#Play [Global] 0"}, RUN_SUCCESS},
      {"MORVANE-NAVERTIX-KOB#ext", "getObj(ext).GetSerial()", {"MORVANE-NAVERTIX-KOB# [Global] 0"}, RUN_SUCCESS},
      {"MORVANE-NAVERTIX-KOB#ext",
       "getObj(ext).Execute('Halt')",
       {"MORVANE-NAVERTIX-KOB#'Halt' [Global] 0"},
       RUN_UNDOCUMENTED_API},
      {"none", "f().GetSerial()", {"#DummyObject.GetSerial(( [Global] 0"}, RUN_SUCCESS},
  };
  for (const Row& row : rows) {
    declare({row.symbol}, {});
    EXPECT_EQ(engine().FindAPIFunctionName4SWF({row.statement}, "movie.swf"), row.code) << row.statement;
    EXPECT_EQ(shown(engine().flashCallList), row.calls) << row.statement;
    EXPECT_TRUE(engine().foundCallList.empty()) << row.statement;
  }
}

TEST_F(FlashCalls, OnlyTheFirstSymbolIsLookedUpInStatements) {
  declare({"C#first", "C#second"}, {});
  EXPECT_EQ(engine().FindAPIFunctionName4SWF({"f(second).GetSerial()", "f(first).GetVersion()"}, "movie.swf"),
            RUN_SUCCESS);
  EXPECT_EQ(expressions(engine().flashCallList), (Texts{"C#DummyObject.GetVersion(("}));
}

TEST_F(FlashCalls, TheFirstUndocumentedLookUpEndsTheFile) {
  declare({"C#a"}, {"C#tv"});
  EXPECT_EQ(engine().FindAPIFunctionName4SWF({"f(a).GetX()", "f(a).GetY()", "f(tv.GetZ())"}, "movie.swf"),
            RUN_UNDOCUMENTED_API);
  EXPECT_EQ(engine().resultList.size(), 1U);
  EXPECT_EQ(engine().flashCallList.size(), 1U);
}

TEST_F(FlashCalls, AllStatementsTogetherAreSearchedForTheVariables) {
  declare({}, {"C#tv", "D#au"});
  // A call needs a separator before it: joined without anything between, the first statement has none.
  EXPECT_EQ(engine().FindAPIFunctionName4SWF({"tv.GetX()", "f(tv.GetSerial());", "g(au.GetVolume())"},
                                             "/t/0/app/www/movie.swf"),
            RUN_SUCCESS);
  EXPECT_EQ(shown(engine().foundCallList), (Texts{"C#(tv.GetSerial()) [Src] -1", "D#(au.GetVolume()) [Src] -1"}));
  EXPECT_EQ(*engine().resultList[0], "../movie.swf(-1) : UndocumentedAPI 'GetSerial' used\n");
}

timespec late() {
  return {firstCheckTime.tv_sec + 21, firstCheckTime.tv_nsec};
}

// Statements that were made in time are searched, whatever that takes.
TEST_F(FlashCalls, ASpentBudgetEndsNeitherSearch) {
  FlashEngine_1_00::startTimeBudget();
  FlashEngine_1_00::TESTING_ONLY_setClock(late);
  for (const bool bound : {false, true}) {
    bound ? declare({}, {"C#tv"}) : declare({"C#tv"}, {});
    (void)engine().FindAPIFunctionName4SWF({bound ? "f(tv.GetX())" : "f(tv).GetX()"}, "movie.swf");
    EXPECT_EQ(engine().resultList.size(), 1U);
  }
  FlashEngine_1_00::TESTING_ONLY_setClock(nullptr);
}

// What is found before the bound on the search counts, and that there is more is told.
TEST_F(FlashCalls, TheSearchEndsAtABoundOfItsOwn) {
  using namespace FlashEngine_1_00;
  const auto searchesOf = [](std::size_t bytes) { return static_cast<std::size_t>(kMaxFlashSearchBytes / bytes); };
  const std::string call = "f(tv0.GetX())";
  const std::size_t unindexed = kMaxIndexedBytes + 1;
  const std::size_t small = std::size_t{1} << 20;
  const struct {
    std::size_t bytes;      // of the statement
    std::size_t variables;  // before the one that is called on
    bool areAlike;
    bool isPast;
  } rows[] = {
      {unindexed, searchesOf(unindexed) - 1, false, false},
      {unindexed, searchesOf(unindexed), false, true},
      {unindexed, 5'000, true, false},
      {small, 5'000, false, false},
      {small, 70'000, false, true},
  };
  for (const auto& row : rows) {
    Texts variables;
    for (std::size_t i = 0; i < row.variables; ++i)
      variables.push_back(row.areAlike ? "C#au" : "C#au" + std::to_string(i));
    variables.push_back("C#tv0");
    declare({}, variables);
    GapList gaps;
    engine().observer = &gaps;
    (void)engine().FindAPIFunctionName4SWF({call + std::string(row.bytes - call.size(), 'x')}, "movie.swf");
    engine().observer = nullptr;
    EXPECT_EQ(engine().resultList.size(), row.isPast ? 0U : 1U) << row.bytes << ' ' << row.variables;
    EXPECT_EQ(gaps.texts, row.isPast ? Texts{"movie.swf"} : Texts());
  }
}

}  // namespace
