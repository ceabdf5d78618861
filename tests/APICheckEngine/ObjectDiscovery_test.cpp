#include "support/EngineFixture.h"

namespace {

class ObjectDiscovery : public EngineTest {
 protected:
  // The records of an application of one page and one script.
  void discover(const std::string& html, const std::string& script = "") {
    Texts files{addHtml(html), addScript(script)};
    ASSERT_EQ(engine().Init(), RUN_SUCCESS);
    ASSERT_EQ(engine().FirstScanSource(&files), RUN_SUCCESS);
    ASSERT_EQ(engine().FindObjectTagToken(), RUN_SUCCESS);
    ASSERT_EQ(engine().FindObjectID(), RUN_SUCCESS);
  }
};

TEST_F(ObjectDiscovery, FindsElementsOfKnownPlugins) {
  struct Row {
    std::string html;
    Texts tags, classes;
  };
  for (const Row& row : std::vector<Row>{
           {"<object id=\"tv\" classid=\"clsid:MORVANE-NAVERTIX-KOB\"></object>",
            {"MORVANE-NAVERTIX-KOB#<objectid=\"tv\"classid=\"clsid:MORVANE-NAVERTIX-KOB\"></object>"},
            {"MORVANE-NAVERTIX-KOB"}},
           {"<OBJECT id='a'>text<param name='x' value='MORVANE-NAVERTIX-DRM'><br></oBjEcT>",
            {"MORVANE-NAVERTIX-DRM#<OBJECTid='a'><paramname='x'value='MORVANE-NAVERTIX-DRM'><br></oBjEcT>"},
            {"MORVANE-NAVERTIX-DRM"}},
           {"<object id='a' MORVANE-NAVERTIX-TUNERSCAN></object>",  // TUNER comes first in the table
            {"MORVANE-NAVERTIX-TUNER#<objectid='a'MORVANE-NAVERTIX-TUNERSCAN></object>"},
            {"MORVANE-NAVERTIX-TUNER"}},
           {"<object id='a'>MORVANE-NAVERTIX-DRM</object>", {}, {}},  // between tags
           {"< object MORVANE-NAVERTIX-DRM></object>", {}, {}},
           {"<object MORVANE-NAVERTIX-DRM><p>", {}, {}},  // never closed
           {"<object UNKNOWN></object><object MORVANE-NAVERTIX-DRM></object>",
            {"MORVANE-NAVERTIX-DRM#<objectMORVANE-NAVERTIX-DRM></object>"},
            {"MORVANE-NAVERTIX-DRM"}},
       }) {
    discover(row.html);
    EXPECT_EQ(expressions(engine().objectTagList), row.tags) << row.html;
    EXPECT_EQ(expressions(engine().objectClassList), row.classes) << row.html;
  }
}

TEST_F(ObjectDiscovery, ReportsCompleteElementsEvenOfUnknownPlugins) {
  std::string path = "x.html";
  for (auto [text, complete] : {std::pair<std::string, bool>{"<object></object>", true},
                                {"<object x><p>", false},
                                {"<object>", true},
                                {"", false}}) {
    EXPECT_EQ(engine().FindObjectTags(&text, &path), complete) << text;
  }
}

TEST_F(ObjectDiscovery, AnIdIsTheOnlyQuotedAttributeThatEndsInId) {
  for (const auto& [element, id] : std::vector<std::pair<std::string, std::string>>{
           {"", "_NO_CLASSID_FOUND_"},
           {"<object id=\"tv\" classid=\"clsid:MORVANE-NAVERTIX-KOB\">", "tv"},
           {"<object pid = 'a b'>", "a b"},
           {"<object id=''>", ""},
           {"<object id=\"a\" name=\"b\" pid=\"c\">", "_NO_CLASSID_FOUND_"},
           {"<object id='a' id=\"b\">", "_NO_CLASSID_FOUND_"},
           {"<object id=\"a\" id=\"tv\">", "_NO_CLASSID_FOUND_"},
           {"<object id='a-b'>", "_NO_CLASSID_FOUND_"},
           {"<object id=tv>", "_NO_CLASSID_FOUND_"},
       }) {
    EXPECT_EQ(engine().parseObjectID(element), id) << element;
  }
}

TEST_F(ObjectDiscovery, AnElementWithTwoIdsHasNone) {
  discover("<object id=\"a\" id=\"tv\" classid='MORVANE-NAVERTIX-TUNER'></object>");
  EXPECT_EQ(expressions(engine().objectIdList), Texts{"MORVANE-NAVERTIX-TUNER#_NO_CLASSID_FOUND_"});
}

TEST_F(ObjectDiscovery, AliasHasNoScope) {
  discover("<object id='tv' classid='MORVANE-NAVERTIX-TUNER'></object>",
           "init('tv'); init(0, 'tv'); other( 'tv' ); function init(obj, n) {} function other(obj) {}");
  EXPECT_EQ(shown(engine().objectIdList), (Texts{"MORVANE-NAVERTIX-TUNER#tv [Global] 0",
                                                 "MORVANE-NAVERTIX-TUNER#obj [] 0", "MORVANE-NAVERTIX-TUNER#n [] 0"}));
  EXPECT_EQ(log("Variation"), (Texts{"FindObjectID: [FindObjectID] VariationSymbol [obj]\t",
                                     "FindObjectID: [FindObjectID] VariationSymbol [n]\t"}));
}

TEST_F(ObjectDiscovery, AliasesFollowTheRulesOfTheCallText) {
  struct Row {
    const char *id, *script;
    Texts symbols;
  } rows[] = {
      {"tv", "init : function (a, b) {} }; init(1, 'tv');", {"#tv", "#b"}},
      {"tv", "function init(a) {} init ('tv');", {"#tv"}},    // the call's name keeps its blank
      {"tv", "function f(a) {} f('other', 'tv');", {"#tv"}},  // the pattern stops at the first t
      {"tv", "function f(a) {} f(x, 'tv');", {"#tv", "#"}},   // no second parameter
      {"tv", "function f(a) {} function f(b) {} f('tv');", {"#tv", "#a", "#b"}},
      {"tv", "getElementById('tv'); function getElementById(a) {}", {"#tv"}},
      {"t\nv", "f('tv'); function f(a) {}", {"#t\nv"}},  // no pattern comes of it
      {"t-v", "f('_NO_CLASSID_FOUND_'); function f(a) {}", {"#_NO_CLASSID_FOUND_", "#a"}},
  };
  for (Row& row : rows) {
    discover("<object id='" + std::string(row.id) + "' MORVANE-NAVERTIX-DRM></object>", row.script);
    for (std::string& symbol : row.symbols)
      symbol.insert(0, "MORVANE-NAVERTIX-DRM");
    EXPECT_EQ(expressions(engine().objectIdList), row.symbols) << row.script;
  }
}

TEST_F(ObjectDiscovery, TheSameSymbolIsKeptOnce) {
  const std::string element = "<object id='tv' MORVANE-NAVERTIX-DRM></object>";
  discover(element + element + "<object id='tv' MORVANE-NAVERTIX-KOB></object>", "");
  EXPECT_EQ(expressions(engine().objectIdList), (Texts{"MORVANE-NAVERTIX-DRM#tv", "MORVANE-NAVERTIX-KOB#tv"}));
  EXPECT_EQ(engine().objectTagList.size(), 3U);
}

TEST_F(ObjectDiscovery, EmbedsIndexSaturates) {
  for (auto [text, index] : std::vector<std::pair<std::string, int>>{
           {"document.embeds[3].x", 3},
           {"embeds[ 12 ]", 12},
           {"a[1]b[2]", 1},
           {"embeds[]", 0},
           {"embeds[7", 0},
           {"]embeds[7", 0},
           {"7", 7},
           {"", 0},
           {"[99999999999]", 2147483647},
           {"[-99999999999]", -2147483647 - 1},
           {"[" + std::string(500, '9') + "]", 2147483647},
       }) {
    EXPECT_EQ(engine().parseEmbedsTagIndex(&text), index) << text;
  }
}

}  // namespace
