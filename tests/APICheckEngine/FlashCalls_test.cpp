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
  const std::string statement = "f(tv0.GetX())" + std::string(4 << 20, 'x');
  // Beside the look-ups.
  const auto searches = static_cast<std::size_t>(FlashEngine_1_00::kMaxFlashSearchBytes / statement.size() - 1);
  for (const std::size_t last : {searches - 1, searches}) {
    Texts variables;
    for (std::size_t i = 0; i < last; ++i)
      variables.push_back("C#au" + std::to_string(i));
    variables.push_back("C#tv0");
    declare({}, variables);
    GapList gaps;
    engine().observer = &gaps;
    (void)engine().FindAPIFunctionName4SWF({statement}, "movie.swf");
    engine().observer = nullptr;
    const bool isPast = last == searches;
    EXPECT_EQ(engine().resultList.size(), isPast ? 0U : 1U);
    EXPECT_EQ(gaps.texts, isPast ? Texts{"movie.swf"} : Texts());
  }
}

}  // namespace
