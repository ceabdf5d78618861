#include <sys/stat.h>

#include <filesystem>

#include "support/EngineFixture.h"

namespace {

class Database : public EngineTest {
 protected:
  Texts documented() {
    Texts names;
    for (const std::string* name : engine().whiteAPIList)
      names.push_back(*name);
    return names;
  }
};

TEST_F(Database, ReadsFunctionsInGroupsAndNothingElse) {
  struct Row {
    const char* xml;
    RunResult code;
    Texts names;
  } rows[] = {
      {"", RUN_SUCCESS, {}},
      {"<APIAnalysisDB><g><Function>A</Function><Function>B</Function><Function>A</Function></g></APIAnalysisDB>",
       RUN_SUCCESS,
       {"A", "B", "A"}},
      {"<?xml version='1.0'?>\r\n<APIAnalysisDB>\r<g>\r\n<Function>A\r\nB</Function>\r</g></APIAnalysisDB>",
       RUN_SUCCESS,
       {"A B"}},  // the parser folds white space
      {"<APIAnalysisDB><Function>NoGroup</Function><Function><Function>In</Function></Function></APIAnalysisDB>",
       RUN_SUCCESS,
       {"In"}},
      {"<APIAnalysisDB><g><h><Function>Deep</Function></h><function>Case</function><Function a='x'/>"
       "<!--Function-->Function<Function><b/>Late</Function><Function>&lt;&amp;</Function></g></APIAnalysisDB>",
       RUN_SUCCESS,
       {"<&"}},
      {"<!--APIAnalysisDB--><x/><APIAnalysisDB><g><Function>1st</Function></g></APIAnalysisDB>"
       "<APIAnalysisDB><g><Function>2nd</Function></g></APIAnalysisDB>",
       RUN_SUCCESS,
       {"1st"}},
      {"<APIAnalysisDB><g><Function>A</Function><Function>Cut", RUN_SUCCESS, {"A", "Cut"}},
      {"<apianalysisdb><g><Function>A</Function></g></apianalysisdb>", RUN_DB_NO_ROOT, {}},
      {"<x><APIAnalysisDB/></x>", RUN_DB_NO_ROOT, {}},
      {"not xml", RUN_DB_NO_ROOT, {}},
      {"\r", RUN_DB_NO_ROOT, {}},
  };
  for (const Row& row : rows) {
    setDatabaseText(row.xml);
    EXPECT_EQ(engine().Init(), row.code) << row.xml;
    EXPECT_EQ(documented(), row.names) << row.xml;
  }
}

TEST_F(Database, DeepNestingIsNoStackDepth) {
  const std::string functions = "<g><Function>A</Function></g>";
  std::string deep;
  std::string shallow;
  for (int i = 0; i < 200000; ++i) {
    deep += "<a b='/>'><!--</a>-->/><![CDATA[</a>]]><?</a>";
    shallow += "<a b='>'/><c></c>";
  }
  setDatabaseText("<APIAnalysisDB>" + functions + deep);
  EXPECT_EQ(engine().Init(), RUN_DB_NO_ROOT);
  setDatabaseText("<APIAnalysisDB>" + shallow + functions + "</APIAnalysisDB>");
  EXPECT_EQ(engine().Init(), RUN_SUCCESS);
  EXPECT_EQ(documented(), (Texts{"A"}));
}

// What the parser reads, with declarations and instructions in which anything can stand.
TEST_F(Database, WhatStandsBeforeTheRootIsNoDepth) {
  for (const char* before :
       {"<?xml-stylesheet href=\"db.xsl?v=1\"?>", "<?xml-stylesheet href=\"a.xsl?x=1&amp;y=2\" type=\"text/xsl\"?>",
        "<?editor name=\"Bob's editor\"?>", "<?xml version=\"1.0\" note=\"a=b\"?>", "<?editor a='&#60; x=y'?>",
        "<?xml version='1.0' encoding=\"UTF-8\"?>\n<!DOCTYPE APIAnalysisDB SYSTEM 'a=b'>", "\xEF\xBB\xBF",
        "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"}) {
    setDatabaseText(std::string(before) + "<APIAnalysisDB><g><Function>A</Function></g></APIAnalysisDB>");
    EXPECT_EQ(engine().Init(), RUN_SUCCESS) << before;
    EXPECT_EQ(documented(), (Texts{"A"})) << before;
  }
}

TEST_F(Database, DeepNestingIsNotHiddenFromTheBound) {
  std::string deep;
  for (int i = 0; i < 200000; ++i)
    deep += "<a>";
  for (const char* hiding :
       {"<!--><![CDATA[-->", "<?xml version=\"><!--\"?>", "<?xml a=\"x version=\" ><!--\"?>", "< \">", "</x <!-- >",
        "<a>&#<!--&#65;", "<a b='&#x'><!--&#x41;'>", "<?xml version='&#x'><!--&#x41;'?>",
        "<?XML  Standalone = '><!--'?>", "<?xmlx version-x='><!--'?>", "<?xml version=1.0><!--\"?>-->",
        "<?xml \xEF\xBB\xBFversion='><!--'?>", "<?xml a='><?b version='><!--'?>-->"}) {
    setDatabaseText(hiding + deep);
    EXPECT_EQ(engine().Init(), RUN_DB_NO_ROOT) << hiding;
  }
}

TEST_F(Database, CutCharactersHideNothing) {
  const std::string utf8 = "<?xml version='1.0' encoding='UTF-8'?>";
  for (const std::string& start : {utf8, std::string("\xEF\xBB\xBF")}) {
    setDatabaseText(start + "<APIAnalysisDB><g><Function>A\xF0</Function><Function>B</Function><Function>C\xF0");
    EXPECT_EQ(engine().Init(), RUN_SUCCESS);
    EXPECT_EQ(documented(), (Texts{"A\xF0", "B", "C\xF0"}));
  }
  std::string deep;
  for (int i = 0; i < 200000; ++i)
    deep += "<a>";
  setDatabaseText(utf8 + "<r>\xC3<!-- " + deep);
  EXPECT_EQ(engine().Init(), RUN_DB_NO_ROOT);
  setDatabaseText(utf8 + "<r>\xF0" + std::string(2, '\0') + deep);
  EXPECT_EQ(engine().Init(), RUN_DB_NO_ROOT);
}

TEST_F(Database, OneThatCannotBeReadIsAFailureAndLogged) {
  std::filesystem::remove(directory() + "/database.xml");
  EXPECT_EQ(engine().Init(), RUN_DB_LOAD_FAILED);
  mkdir((directory() + "/database.xml").c_str(), 0755);
  EXPECT_EQ(engine().Init(), RUN_DB_LOAD_FAILED);
  std::filesystem::remove(directory() + "/database.xml");
  setDatabaseText("<APIAnalysisDB/>");
  std::filesystem::resize_file(directory() + "/database.xml", std::uintmax_t{5} << 30);  // 1 GiB in 32 bits
  EXPECT_EQ(engine().Init(), RUN_DB_LOAD_FAILED);
  setDatabaseText("<x/>");
  EXPECT_EQ(engine().Init(), RUN_DB_NO_ROOT);
  EXPECT_EQ(log("loadDeviceAPIInfo"),
            (Texts{"Init:  loadDeviceAPIInfo Error [1010] ", "Init:  loadDeviceAPIInfo Error [1010] ",
                   "Init:  loadDeviceAPIInfo Error [1010] ", "Init:  loadDeviceAPIInfo Error [1012] "}));
  EXPECT_EQ(log("Time [Init]").size(), 4U);
}

}  // namespace
