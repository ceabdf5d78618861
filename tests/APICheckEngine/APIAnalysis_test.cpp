#include "APICheckEngine/APIAnalysis.h"

#include "APICheckEngine/Tables.h"
#include "platform/TimeBudget.h"
#include "support/EngineFixture.h"
#include "tarvo/api_check_engine.h"

namespace {

class Lifetime : public EngineTest {};

timespec fixedTime() {
  return {12, 345678901};
}

TEST_F(Lifetime, ConstructorLogsItsClock) {
  clearLog();
  FlashEngine_1_00::TESTING_ONLY_setClock(fixedTime);
  destoryInstance(createInstance());
  FlashEngine_1_00::TESTING_ONLY_setClock(nullptr);
  EXPECT_EQ(firstTimeVal, 12'345'678U);
  EXPECT_EQ(log(), (Texts{
                       "APIAnalysis: Engine Version [140808_QX_1.30] ",
                       "APIAnalysis: [APIAnalysis] [sec:usec] : 12:345678901 ",
                       "~APIAnalysis: [~APIAnalysis] ",
                       "~APIAnalysis: [~APIAnalysis] [sec:nsec] : 12:345678901 ",
                       "~APIAnalysis: [DeviceAPI]==============================================================",
                       "~APIAnalysis: ### All Symbol Table data is Successfully deleted!! ###",
                   }));
}

TEST_F(Lifetime, SecondResultListReplacesFirst) {
  const std::unique_ptr<Texts> first(g_SWFResultVector);  // abandoned by the library: ours now
  Texts* second = createResultVector();
  EXPECT_NE(second, first.get());
  EXPECT_EQ(second, g_SWFResultVector);
  run();
  EXPECT_TRUE(first->empty());
}

TEST_F(Lifetime, ResultListPointerStaysAfterDestruction) {
  Texts* list = g_SWFResultVector;
  destoryResultVector();
  EXPECT_EQ(g_SWFResultVector, list);
  createResultVector();  // for the fixture
}

TEST_F(Lifetime, SecondRunKeepsPathsOfTheFirst) {
  addHtml("<object id='tv' classid='MORVANE-NAVERTIX-TUNER'></object>");
  addScript("function f() { var tv = document.getElementById('tv'); tv.GetSerial(); }");
  ASSERT_EQ(run(), RUN_UNDOCUMENTED_API);
  const Texts findings = *g_SWFResultVector;
  const auto calls = expressions(engine().foundCallList);
  EXPECT_EQ(run(), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(engine().worthfulPathList.size(), 4U);
  EXPECT_EQ(engine().worthfulExtList.size(), 4U);
  EXPECT_EQ(engine().worthfulSourceList.size(), 2U);
  EXPECT_EQ(engine().cleanedSourceList.size(), 2U);
  EXPECT_EQ(engine().whiteAPIList.size(), 4U);
  EXPECT_EQ(expressions(engine().foundCallList), calls);
  expectFindings(findings);
}

TEST(Tables, HaveTheirFixedEnds) {
  EXPECT_STREQ(SystemFunctionPool[0], "AboutBox");
  EXPECT_STREQ(SystemFunctionPool[kSystemFunctionCount - 1], "document.writeln");
  EXPECT_STREQ(FlashEngine_1_00::pluginClassIdTable.back(), FlashEngine_1_00::kExtensionPlugin);
  EXPECT_STREQ(word[25], "z");
  EXPECT_STREQ(word4CapitalSWF[25], "Z");
  APIAnalysis engine;
  EXPECT_EQ(engine.documentExtentionChecker("INFO"), 1);
  EXPECT_EQ(engine.documentExtentionChecker("Html"), 0);
}

}  // namespace
