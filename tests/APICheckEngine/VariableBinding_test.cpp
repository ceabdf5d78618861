#include "support/EngineFixture.h"

namespace {

class VariableBinding : public EngineTest {
 protected:
  // The bindings of a script with the plug-in elements "tv" (TUNER) and "au" (AUDIO).
  void bind(const std::string& script) {
    Texts files{
        addHtml("<object id='tv' MORVANE-NAVERTIX-TUNER></object><object id='au' MORVANE-NAVERTIX-AUDIO></object>"),
        addScript(script)};
    ASSERT_EQ(engine().Init(), RUN_SUCCESS);
    ASSERT_EQ(engine().FirstScanSource(&files), RUN_SUCCESS);
    ASSERT_EQ(engine().FindObjectTagToken(), RUN_SUCCESS);
    ASSERT_EQ(engine().FindObjectID(), RUN_SUCCESS);
    ASSERT_EQ(engine().FindDeclareListValidation(), RUN_SUCCESS);
    ASSERT_EQ(engine().FindObjectVariable(), RUN_SUCCESS);
  }
};

TEST_F(VariableBinding, BindsWhatIsAssignedALookUp) {
  struct Row {
    const char* script;
    Texts bindings;
  } rows[] = {
      {"\n\nvar t = document.getElementById('tv'); ", {"MORVANE-NAVERTIX-TUNER#t [Func] 2"}},
      {"a\nthis.au = $('au'); abc", {"MORVANE-NAVERTIX-AUDIO#this.au [Src] 2"}},
      {"t=document.getElementById( \"tv\" ); ", {"MORVANE-NAVERTIX-TUNER#t [Func] 1"}},
      {"var t =document.getElementById('tv'); ", {"MORVANE-NAVERTIX-TUNER#t [Func] 1"}},
      {"var a=1,t =document.getElementById('tv'); ", {"MORVANE-NAVERTIX-TUNER#t [Func] 1"}},
      {"var t =$('tv'); abcdefgh", {"MORVANE-NAVERTIX-TUNER#t [Func] 1"}},
      {"t =\n\t$('tv'); abcdefgh", {"MORVANE-NAVERTIX-TUNER#t [Func] 1"}},
      {"if (t ==$('tv')) abcdefgh", {}},
      {"x +=$('tv'); abcdefgh", {}},
      {"x document.getElementById('tv').Open(1);", {}},
      {"x = $('tv') . Open(1); abcdefgh", {}},
      {"x a=b=document.getElementById('tv'); ", {"MORVANE-NAVERTIX-TUNER#b [Func] 1"}},
      {"t = document.getElementById('other'); ", {}},
      {"if (t == $('tv')) abcdefghij", {}},
      {"t = document.embeds[1]; abc", {"MORVANE-NAVERTIX-AUDIO#t [Func] 1", "MORVANE-NAVERTIX-AUDIO#t [Func] 1"}},
      {"t = document.embeds[2]; abc", {}},
  };
  for (const Row& row : rows) {
    bind(row.script);
    EXPECT_EQ(shown(engine().objectVariableList), row.bindings) << row.script;
  }
}

TEST_F(VariableBinding, ALongerAccessExpressionBindsEveryVariableInIt) {
  bind("");
  auto declared = std::make_unique<SWFStateMentInfo>();
  declared->expression = std::make_unique<std::string>("C#a = b = document.getElementById('tv')");
  append(engine().declareList, std::move(declared));
  ASSERT_EQ(engine().FindObjectVariable(), RUN_SUCCESS);
  EXPECT_EQ(expressions(engine().objectVariableList), (Texts{"C#a", "C#b"}));
}

TEST_F(VariableBinding, EmbedsRepeatPerSymbol) {
  const std::string far(500, '-');
  bind("d=document.embeds[1]; " + far + " e=document.embeds[0]; " + far + " $('tv'); abcdefgh");
  const std::string tuner = "MORVANE-NAVERTIX-TUNER#";
  const std::string audio = "MORVANE-NAVERTIX-AUDIO#";
  EXPECT_EQ(expressions(engine().declareList),
            (Texts{tuner + " $('tv')", tuner + "e=document.embeds[0]", tuner + "e=document.embeds[0]",
                   audio + "d=document.embeds[1]", audio + "d=document.embeds[1]"}));
  EXPECT_TRUE(engine().embedsDeclareList.empty());
}

TEST_F(VariableBinding, TheLastFunctionWithTheLookUpIsTheBindingsText) {
  bind(
      "function one() { var t = $('tv'); one; } function two() { var t = $('tv'); two; } function three() { $('au') }");
  ASSERT_FALSE(engine().objectVariableList.empty());
  for (const SWFStateMentInfo* binding : engine().objectVariableList) {
    EXPECT_EQ(binding->text, " { var t = $('tv'); two; }");
  }
}

TEST_F(VariableBinding, LineFeedAtTheStartIsNotCounted) {
  const std::string first = addFile("first.js", "\nabc\r\n(tv\n tv");
  Texts files{first};
  ASSERT_EQ(engine().FirstScanSource(&files), RUN_SUCCESS);
  struct Row {
    std::string path, symbol;
    int line;
  };
  for (Row row : std::vector<Row>{{first, "abc", 1},
                                  {first, "tv", 2},
                                  {first, "( tv", 2},
                                  {first, "((tv", 2},
                                  {first, "missing", 0},
                                  {first, "(", 2},
                                  {first, "", 1},
                                  {"other.js", "abc", -1}}) {
    EXPECT_EQ(engine().foundSymbolLineNumber(&row.path, &row.symbol), row.line) << row.symbol;
  }
}

}  // namespace
