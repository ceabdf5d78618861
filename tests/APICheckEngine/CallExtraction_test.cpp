#include <map>
#include <set>

#include "support/EngineFixture.h"
#include "tarvo/api_check_engine.h"

namespace {

class CallExtraction : public EngineTest {
 protected:
  static std::string page(const std::string& id, const std::string& plugin) {
    return "<object id='" + id + "' classid='clsid:MORVANE-NAVERTIX-" + plugin + "'></object>";
  }
  // The calls on `tv`, an object of class `classId`, in a text that is not one of the application's.
  Texts callsIn(std::string text, const std::string& classId = "C", const std::string& name = "tv") {
    clearCalls();
    EXPECT_EQ(engine().findAPIsFromPool(classId, name, &text, "no such file"), RUN_SUCCESS);
    return shown(engine().foundCallList);
  }
  void clearCalls() { FlashEngine_1_00::releaseAll(engine().foundCallList); }
};

TEST_F(CallExtraction, FindsCallsOnAVariable) {
  setDatabase({"GetModel", "Set", "Start", "'Play'", "Execute", "x"});
  ASSERT_EQ(engine().Init(), RUN_SUCCESS);
  struct Row {
    const char* text;
    Texts calls;
  } rows[] = {
      {"x = tv.GetModel();", {"C#tv.GetModel() [Src] -1"}},
      {"f(tv.GetModel( ))", {"C#(tv.GetModel() [Src] -1"}},
      {"\ttv . GetModel () tv.x()", {"C#\ttv.GetModel()tv.x() [Src] -1"}},  // one list of parameters
      {"mytv.GetModel(); =tv.GetModel(); tv2.GetModel(); tv.GetModel", {}},
      {"tv.GetModel();", {}},  // nothing before the name
      {" tv.Set('a', b[1].c(), 2/3)", {"C#tv.Set('a',b[1].c() [Src] -1"}},
      {" tv.Set(a + b); tv.Set(a)", {"C#tv.Set(a) [Src] -1"}},
      {" tv.Open(1); tv.OpenAll();", {"null [Src] -1", "null [Src] -1"}},
      {" tv.Execute( \"Start\" )", {"C#Start [Src] -1"}},
      {" tv.Execute('Play', 1)", {"C#'Play' [Src] -1"}},
      {" tv.Execute()", {"C#tv.Execute() [Src] -1"}},
      {" tv.x(); tv.Execute (1)", {"C#tv.x() [Src] -1", "C#tv.Execute(1) [Src] -1"}},
  };
  for (const Row& row : rows)
    EXPECT_EQ(callsIn(row.text), row.calls) << row.text;
  EXPECT_EQ(callsIn(" a b.GetModel()", "C", "a b"), Texts{});  // blanks go from the name
  EXPECT_EQ(callsIn(" ab.GetModel()", "C", "a b"), (Texts{"C#ab.GetModel() [Src] -1"}));
  EXPECT_EQ(callsIn(" ab.GetModel()", "C", "a\xFF"), Texts{});  // no pattern comes of it
}

TEST_F(CallExtraction, SingleQuotesStayInExtensionNames) {
  for (auto [text, name] : std::vector<std::pair<std::string, std::string>>{{"k.Execute('Play')", "'Play'"},
                                                                            {"k.Execute(\"Play\")", "Play"},
                                                                            {"Execute(\n \"A b\"", "Ab"},
                                                                            {"Execute (1)", ""},
                                                                            {"Run(1)", ""}}) {
    EXPECT_EQ(engine().findAPINameForKOBCase(&text), name) << text;
  }
}

TEST_F(CallExtraction, ScriptScannerGoesOnAfterAFinding) {
  addHtml(page("tv", "TUNER") + page("au", "AUDIO"));
  addScript(
      "function one() { var tv = $('tv');\n tv.GetSerial(); tv.GetModel(); }\n"
      "function two() { var au = $('au');\n au.GetSerial(); }");
  EXPECT_EQ(run(), RUN_UNDOCUMENTED_API);
  expectFindings(
      {"../main.js(2) : UndocumentedAPI 'GetSerial' used\n", "../main.js(4) : UndocumentedAPI 'GetSerial' used\n"});
}

TEST_F(CallExtraction, VariablesOfTheWholeFileAreSearchedInAllOfIt) {
  addHtml(page("tv", "TUNER"));
  addScript("function f() { this.tv = $('tv'); }\nfunction g() { return (this.tv.GetSerial()); }");
  EXPECT_EQ(run(), RUN_UNDOCUMENTED_API);
  expectFindings({"../main.js(2) : UndocumentedAPI 'GetSerial' used\n"});
}

TEST_F(CallExtraction, CommonObjectsAreNotPlugins) {
  const std::string near = "Common.API.Widget()";
  struct Row {
    std::string between;
    bool found;
  } rows[] = {{" = new " + near, false}, {std::string(50, ' ') + near, true}, {"; Common.API.Other", true}};
  for (const Row& row : rows) {
    addHtml(page("tv", "TUNER"));
    addScript("function f() { var tv = $('tv'); tv.GetSerial(); tv" + row.between + " }");
    EXPECT_EQ(run() == RUN_UNDOCUMENTED_API, row.found) << row.between;
  }
}

TEST_F(CallExtraction, CallsOnALookUpAreJudgedAtOnce) {
  struct Row {
    const char *plugin, *script;
    Texts candidates, calls;
    RunResult code;
  } rows[] = {
      {"TUNER",
       "a;\n$('tv').GetSerial(1); $('tv').GetModel(); abc",
       {"('tv').GetSerial("},
       {"MORVANE-NAVERTIX-TUNER#DummyObject.GetSerial( [Src] 2"},
       RUN_UNDOCUMENTED_API},
      {"TUNER",
       " document.getElementById(\"tv\") . GetVolume ( ); abc",
       {"(\"tv\") . GetVolume ("},
       {"MORVANE-NAVERTIX-TUNER#DummyObject.GetVolume( [Src] 1"},
       RUN_SUCCESS},
      {"TUNER", "$('tv').toString(); abcdefgh", {"('tv').toString("}, {}, RUN_SUCCESS},
      {"TUNER", "$('tv').Ergo(); abcdefghijkl", {"('tv').Ergo("}, {}, RUN_SUCCESS},  // ends in "go"
      {"KOB", "$('tv').GetSerial(); abcdefghij", {"('tv').GetSerial("}, {"MORVANE-NAVERTIX-KOB# [Src] 1"}, RUN_SUCCESS},
      {"TUNER",
       "$('tv').Execute('Play'); abcdefg",
       {"('tv').Execute("},
       {"MORVANE-NAVERTIX-TUNER# [Src] 1"},
       RUN_SUCCESS},
      {"TUNER", "x = document.embeds[0]; ('tv').GetSerial(); abc", {}, {}, RUN_SUCCESS},
  };
  for (const Row& row : rows) {
    addHtml(page("tv", row.plugin));
    addScript(row.script);
    EXPECT_EQ(run(), row.code) << row.script;
    EXPECT_EQ(expressions(engine().lookupCandidateList), row.candidates) << row.script;
    EXPECT_EQ(shown(engine().foundCallList), row.calls) << row.script;
  }
}

TEST_F(CallExtraction, TheLastFunctionCountsHoweverManyRecordsAreAlike) {
  std::string keywords;
  for (int i = 0; i < 64; ++i)
    keywords += "function ";
  addHtml(page("tv", "TUNER"));
  // The inner function is found once more than its records are kept; it, not the outer one, is the variable's.
  addScript("s = \"" + keywords +
            "();\"}}} function outer(){ function inner(){ var t = document.getElementById('tv'); "
            "return t } {{ }}\n t.GetSerial(); }");
  EXPECT_EQ(run(), RUN_SUCCESS);
  expectFindings({});
}

TEST_F(CallExtraction, ManyLookUpsOfOneElementKeepABoundedNumberOfRecords) {
  std::string script;
  for (int i = 0; i < 300; ++i)
    script += "function f" + std::to_string(i) + "(){ $('tv').GetVolume(); this.t = $('tv'); }\n";
  addHtml(page("tv", "TUNER"));
  addScript(script + "function last(){ $('tv').GetSerial(); }");
  EXPECT_EQ(run(), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(g_SWFResultVector->size(), 1U);
  EXPECT_LE(engine().lookupCandidateList.size(), 2 * 64U);
  EXPECT_LE(engine().objectVariableList.size(), 64U);
}

// 90 look-ups on lines of their own, and the call: a record for each line. Of one line, all are equal.
TEST_F(CallExtraction, CallsOnLookUpsAreEqualOnlyOnOneLine) {
  for (const bool ownLines : {true, false}) {
    std::string script = "function f() {";
    for (int i = 0; i < 90; ++i)
      script += (ownLines ? "\n a" : " a") + std::to_string(i) + " = $('tv');";
    addHtml(page("tv", "TUNER"));
    addScript(script + "\n $('tv').Good(1); }");
    setDatabase({"Good"});
    EXPECT_EQ(run(), RUN_SUCCESS);
    std::map<const SWFStateMentInfo*, int> places;
    std::set<int> lines;
    for (const SWFStateMentInfo* call : engine().foundCallList) {
      EXPECT_LE(++places[call], 64);
      lines.insert(call->line);
    }
    EXPECT_EQ(places.size(), ownLines ? 91U : 2U);
    EXPECT_EQ(lines.size(), places.size());
    EXPECT_EQ(engine().lookupCandidateList.size(), 64U);
  }
}

// 1,500 look-ups without a blank between are in each other's excerpts; 600 calls on look-ups go with each of their
// lines.
TEST_F(CallExtraction, ListsStayBoundedAndTheLastCallIsJudged) {
  std::string script;
  for (int i = 0; i < 1'500; ++i)
    script += "a" + std::to_string(i) + "=$('tv');a" + std::to_string(i) + ".GetVolume();" + (i % 3 == 0 ? "\n" : "");
  for (int i = 0; i < 600; ++i)
    script += "$('tv').Get" + std::to_string(i % 20) + "();\n";
  addHtml(page("tv", "TUNER"));
  addScript(script + "function last(){ $('tv').GetSerial(); }");
  std::set<std::string> documented{"GetVolume"};
  for (int i = 0; i < 20; ++i)
    documented.insert("Get" + std::to_string(i));
  setDatabase({documented.begin(), documented.end()});
  EXPECT_EQ(run(), RUN_UNDOCUMENTED_API);
  EXPECT_EQ(g_SWFResultVector->size(), 1U);
  EXPECT_LE(engine().objectAccessList.size(), FlashEngine_1_00::kLongList + 1'500 + 621);
  EXPECT_GT(engine().objectAccessList.size(), FlashEngine_1_00::kLongList);
  EXPECT_LE(engine().foundCallList.size(), FlashEngine_1_00::kLongList + FlashEngine_1_00::kMaxLookupPlaces);
}

TEST_F(CallExtraction, HostileScriptsLoseNothing) {
  const std::string call = "function f() { var tv = $('tv'); tv.GetSerial(); }";
  for (const std::string& around : {std::string("(((((((((("), std::string(3000, '{'), std::string("<object "),
                                    std::string(100000, 'a'), std::string("\xFF\xFE\x01"), std::string("'\"`")}) {
    addHtml(page("tv", "TUNER"));
    addScript(call + around);
    EXPECT_EQ(run(), RUN_UNDOCUMENTED_API) << around.substr(0, 20);
  }
}

}  // namespace
