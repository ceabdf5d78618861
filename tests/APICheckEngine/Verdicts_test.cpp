#include "APICheckEngine/Verdicts.h"

#include "support/EngineFixture.h"

using namespace FlashEngine_1_00::detail;

namespace {

class Verdicts : public EngineTest {
 protected:
  RunResult judge(const char* expression, const std::string& path = "/tmp/0/app/www/a.js", int line = 7) {
    SWFStateMentInfo call;
    if (expression != nullptr) call.expression = std::make_unique<std::string>(expression);
    call.path = path;
    call.line = line;
    return engine().DetermineAPISecurity(engine().resultList, &call);
  }
};

TEST_F(Verdicts, MethodIsWhatTheFirstDotAndParenthesisEnclose) {
  for (const auto& [callText, method] : std::vector<std::pair<std::string, std::string>>{{"obj.getInfo (x)", "getInfo"},
                                                                                         {"a.b.c(1)", "c"},
                                                                                         {"a.b(1).c(2)", "b"},
                                                                                         {"getInfo (", "getInfo"},
                                                                                         {". x\t(", "x\t"},
                                                                                         {"Start", "Start"},
                                                                                         {"a.b", "ab"},
                                                                                         {"'Play'", "'Play'"}}) {
    EXPECT_EQ(methodName(callText), method) << callText;
  }
}

TEST_F(Verdicts, FindingLineShowsThePathFromItsFifthComponent) {
  EXPECT_EQ(findingLine("/tmp/1234/app/www/js/main.js", 57, "getSerial"),
            "../js/main.js(57) : UndocumentedAPI 'getSerial' used\n");
  EXPECT_EQ(findingLine("/tmp//0/app/www/a.js", 0, "x"), "../a.js(0) : UndocumentedAPI 'x' used\n");
  EXPECT_EQ(findingLine("/a/b/c/d", -1, "x"), "../(-1) : UndocumentedAPI 'x' used\n");
}

TEST_F(Verdicts, OnlyNamesOfTheDatabaseAreDocumented) {
  setDatabase({"Play", "tvPlay", "GetSerial "});
  ASSERT_EQ(engine().Init(), RUN_SUCCESS);
  struct Row {
    const char* expression;
    RunResult code;
  } rows[] = {
      {"C#tv.Play()", RUN_SUCCESS},
      {"C#Play#tv.Stop()", RUN_SUCCESS},
      {"C#tv.play()", RUN_UNDOCUMENTED_API},
      {"C#Pla", RUN_UNDOCUMENTED_API},
      {"C#tv.Plays(", RUN_UNDOCUMENTED_API},
      {nullptr, RUN_SUCCESS},
      {"C", RUN_SUCCESS},
      {"C#", RUN_SUCCESS},
      {"", RUN_SUCCESS},
  };
  for (const Row& row : rows)
    EXPECT_EQ(judge(row.expression), row.code) << row.expression;
}

TEST_F(Verdicts, EqualLinesAreKeptOnceAndStillCount) {
  ASSERT_EQ(engine().Init(), RUN_SUCCESS);
  EXPECT_EQ(judge("C#a.X()"), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(judge("D#b.X("), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(judge("C#a.X()", "/tmp/0/app/www/a.js", 8), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(engine().resultList.size(), 2U);
}

TEST_F(Verdicts, AnEmptyDatabaseDocumentsNothing) {
  setDatabaseText("");
  ASSERT_EQ(engine().Init(), RUN_SUCCESS);
  EXPECT_EQ(judge("C#a.Play()"), RUN_UNDOCUMENTED_API);
}

TEST_F(Verdicts, FinishStopsAtTheFirstUndocumentedCall) {
  ASSERT_EQ(engine().Init(), RUN_SUCCESS);
  for (const char* expression : {"C#a.Play()", "C#a.X()", "C#a.Y()"}) {
    auto call = std::make_unique<SWFStateMentInfo>();
    call->expression = std::make_unique<std::string>(expression);
    append(engine().foundCallList, std::move(call));
  }
  EXPECT_EQ(engine().Finish(engine().resultList), RUN_UNDOCUMENTED_API);
  ASSERT_EQ(engine().resultList.size(), 1U);
  EXPECT_EQ(*engine().resultList[0], "../(0) : UndocumentedAPI 'X' used\n");
}

}  // namespace
