#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <set>

#include "platform/TimeBudget.h"
#include "support/EngineFixture.h"
#include "swf-assembler/Assembler.h"
#include "tarvo/api_check_engine.h"

namespace {

class Driver : public EngineTest {};

const char* const kPage = "<object id='tv' classid='MORVANE-NAVERTIX-TUNER'></object>";

TEST_F(Driver, LogsEveryStageOfACompleteRun) {
  addHtml(kPage);
  const std::string package = addZip("app.wgt", {{"www/js/main.js", "var a = 1;"}});
  clearLog();
  EXPECT_EQ(run(), RUN_SUCCESS);
  const std::string size = std::to_string(std::filesystem::file_size(package));
  EXPECT_EQ(log(), (Texts{
                       "addFilePathbyUnzipping:  \n [addFilePathbyUnzipping] [2]",
                       "addFilePathbyUnzipping:  zip file found [" + package + "]/ Size [" + size + "]",
                       "addFilePathbyUnzipping:  \n [addFilePathbyUnzipping] [1]",
                       "StartAnalysis:  additionally added path : [" + directory() + "/0/www/js/main.js]",
                       "PrintProcessingTime: Time [Init]",
                       "FirstScanSource:  WorthFul File [2] EA",
                       "PrintProcessingTime: Time [FirstScanSource]",
                       "PrintProcessingTime: Time [Prepare]",
                       "PrintProcessingTime: Time [GetDeviceAPIsFromSWFMain]",
                       "PrintProcessingTime: Time [AfterFindObjectTagToken]",
                       "PrintProcessingTime: Time [AfterFindAPIFunctionName4JS]",
                       "PrintProcessingTime: Time [Finished]",
                       "StartAnalysis:  outPutFileFullPath [" + directory() + "/AnalysisResult]",
                   }));
  expectFindings({});
}

TEST_F(Driver, AnEmptyListEmptiesTheResultsOfAnEarlierRun) {
  g_SWFResultVector->push_back("old");
  writeFile(directory() + "/AnalysisResult", "old");
  EXPECT_EQ(run(), RUN_SUCCESS);
  expectFindings({});
}

TEST_F(Driver, PublishesTheFindingThatStoppedTheRun) {
  addHtml(kPage);
  addScript("function f() {\n var tv = document.getElementById('tv');\n tv.GetSerial(); }");
  EXPECT_EQ(run(), RUN_UNDOCUMENTED_API);
  expectFindings({"../main.js(3) : UndocumentedAPI 'GetSerial' used\n"});
  EXPECT_EQ(log("returnCode"), (Texts{"StartAnalysis: [1][StartAnalysis] returnCode [1001] "}));
}

TEST_F(Driver, AFailedStageIsLoggedAndStillCleansUpAndPublishes) {
  std::filesystem::remove(directory() + "/database.xml");
  addZip("app.wgt", {{"a.js", "x"}});
  writeFile(directory() + "/AnalysisResult", "old");
  EXPECT_EQ(run(), RUN_DB_LOAD_FAILED);
  expectFindings({});
  EXPECT_FALSE(std::filesystem::exists(directory() + "/0"));
  EXPECT_EQ(log("[1010]"),
            (Texts{"Init:  loadDeviceAPIInfo Error [1010] ", "StartAnalysis: [StartAnalysis] Init-returnCode [1010] ",
                   "StartAnalysis: [0][StartAnalysis] returnCode [1010] "}));
}

TEST_F(Driver, AResultFileThatCannotBeWrittenChangesNoCode) {
  mkdir((directory() + "/AnalysisResult").c_str(), 0755);
  addHtml(kPage);
  EXPECT_EQ(run(), RUN_SUCCESS);
  EXPECT_EQ(log("Open Error"), (Texts{"StartAnalysis:  file[" + directory() + "/AnalysisResult] Open Error "}));
}

TEST_F(Driver, CleanUpRemovesLinksAndNotTheirTargets) {
  const std::string kept = addFile("kept.txt", "kept");
  std::filesystem::create_directory(directory() + "/0");
  std::filesystem::create_directory_symlink(directory() + "/app", directory() + "/0/link");
  addZip("app.wgt", {{"a.txt", "x"}});
  EXPECT_EQ(run(), RUN_SUCCESS);
  EXPECT_FALSE(std::filesystem::exists(directory() + "/0"));
  EXPECT_TRUE(std::filesystem::exists(kept));
}

// A movie that calls `method` on what getObj(tv) gives.
std::string movieCalling(const std::string& method) {
  return swf_assembler::assemble("doaction {\nPush 0 \"tv\" 1 \"getObj\"\nCallFunction\nPush \"" + method +
                                 "\"\nCallMethod\n}\nend\n");
}

TEST_F(Driver, CodeIsThatOfTheLastFlashFile) {
  addHtml(kPage);
  addFile("a.swf", movieCalling("GetSerial"));
  addFile("b.SWF", movieCalling("GetVersion"));
  EXPECT_EQ(run(), RUN_SUCCESS);
  expectFindings({"../a.swf(0) : UndocumentedAPI 'GetSerial' used\n"});
  addFile("c.swf", movieCalling("GetModel"));
  EXPECT_EQ(run(), RUN_UNDOCUMENTED_API);
  expectFindings(
      {"../a.swf(0) : UndocumentedAPI 'GetSerial' used\n", "../c.swf(0) : UndocumentedAPI 'GetModel' used\n"});
}

TEST_F(Driver, FlashFilesAreKnownByTheirExtensionAndFailNothing) {
  addHtml(kPage);
  addFile("movie.Swf", movieCalling("GetSerial"));
  addFile("empty.swf", "");
  addFile("other.swf", "not Flash");
  EXPECT_EQ(run(), RUN_SUCCESS);
  expectFindings({});
}

TEST_F(Driver, VariablesOfThePageAreFoundInFlash) {
  addHtml(kPage);
  addScript("function f() { var tuner = document.getElementById('tv'); }");
  addFile("movie.swf", swf_assembler::assemble("signature CWS\ndoaction {\nPush 0 \"tuner\" \"GetSerial\"\nCallMethod\n"
                                               "Push 1 \"trace\"\nCallFunction\n}\nend\n"));
  EXPECT_EQ(run(), RUN_UNDOCUMENTED_API);
  expectFindings({"../movie.swf(-1) : UndocumentedAPI 'GetSerial' used\n"});
}

int questionsLeft = 0;  // that find the budget unspent
int questions = 0;

timespec spentAfterQuestions() {
  ++questions;
  return {firstCheckTime.tv_sec + (questionsLeft-- > 0 ? 0 : 21), firstCheckTime.tv_nsec};
}

// The clock is asked at the head of every loop over Flash content: its work ends there, the rest of the run does not.
TEST_F(Driver, ABudgetSpentAtAnyQuestionCutsFlashWorkOnly) {
  addHtml(kPage);
  addScript("function f() { var tuner = document.getElementById('tv'); }");
  addFile("a.swf", movieCalling("GetSerial"));
  addFile("b.swf", movieCalling("GetSerial"));
  addZip("app.wgt", {{"a.js", "a"}});
  FlashEngine_1_00::startTimeBudget();
  FlashEngine_1_00::TESTING_ONLY_setClock(spentAfterQuestions);
  std::size_t found = 0;
  for (int unspent = 0, last = 1; unspent <= last; ++unspent) {
    questionsLeft = unspent;
    questions = 0;
    const RunResult code = run();
    last = std::max(last, questions);
    EXPECT_EQ(code, g_SWFResultVector->size() == 2 ? RUN_UNDOCUMENTED_API : RUN_SUCCESS) << unspent;
    EXPECT_GE(g_SWFResultVector->size(), found) << "less work in more time, at question " << unspent;
    found = g_SWFResultVector->size();
    EXPECT_TRUE(unspent > 0 || found == 0);
    EXPECT_FALSE(std::filesystem::exists(directory() + "/" + std::to_string(unspent)));
    EXPECT_EQ(log("returnCode [1027]"), Texts());
  }
  FlashEngine_1_00::TESTING_ONLY_setClock(nullptr);
  EXPECT_EQ(found, 2U);
}

class CallList : public FlashEngine_1_00::Observer {
 public:
  void callFound(const FlashEngine_1_00::FoundCall& call) override {
    (call.isOnDevice && !isBehindStop ? onDevice : behind).insert(call.method);
  }
  void stopPassed() override { isBehindStop = true; }
  void stageEnded() override { isBehindStop = false; }

  bool isBehindStop = false;
  std::set<std::string> onDevice, behind;
};

// It is told of what stands behind each stop; code, lines, lists and log are those of a run that stops there.
TEST_F(Driver, AnObserverOfAllLeavesARunAsItIs) {
  addHtml(kPage);
  addScript(
      "function f() { var tuner = document.getElementById('tv'); tuner.GetA(); tuner.GetB(); tuner.GetVersion(); }");
  const std::string lookUps = addFile("look-ups.js", "$('tv').GetC(1); $('tv').GetD(1);");
  addFile("a.swf", movieCalling("GetE"));
  addFile("b.swf", movieCalling("GetVolume"));
  for (const bool stopsBeforeFlash : {true, false}) {
    if (!stopsBeforeFlash) writeFile(lookUps, "");
    clearLog();
    const RunResult code = run();
    const Texts lines = *g_SWFResultVector;
    const Texts calls = shown(engine().foundCallList);
    const Texts flashCalls = shown(engine().flashCallList);
    const Texts candidates = shown(engine().lookupCandidateList);
    const Texts logged = log();
    clearLog();
    CallList list;
    list.all = true;
    engine().observer = &list;
    EXPECT_EQ(run(), code);
    engine().observer = nullptr;
    EXPECT_EQ(*g_SWFResultVector, lines);
    EXPECT_EQ(shown(engine().foundCallList), calls);
    EXPECT_EQ(shown(engine().flashCallList), flashCalls);
    EXPECT_EQ(shown(engine().lookupCandidateList), candidates);
    using Names = std::set<std::string>;
    EXPECT_EQ(list.onDevice, stopsBeforeFlash ? (Names{"GetA", "GetC"}) : (Names{"GetA", "GetE", "GetVolume"}));
    EXPECT_EQ(list.behind, stopsBeforeFlash ? (Names{"GetB", "GetVersion", "GetD", "GetE", "GetVolume"})
                                            : (Names{"GetB", "GetVersion"}));
    if (!stopsBeforeFlash) {
      EXPECT_EQ(log(), logged);
    }
  }
}

}  // namespace
