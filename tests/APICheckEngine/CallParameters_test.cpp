#include "support/EngineFixture.h"

namespace {

TEST(CallParameters, SplitsArgumentsByItsOwnCount) {
  struct Row {
    const char* text;
    Texts arguments;
  } rows[] = {
      {"f(a, b)", {"a", " b"}},
      {"f()", {""}},
      {"f", {}},
      {"f(", {}},
      {"f(a", {}},
      {"f(g(x), y)", {"g(x)", " y"}},
      {"f(a,)", {"a", ""}},
      {"f(,)", {"", ""}},
      {"f((a),b)", {"(a)", "b"}},
      {"f(a, (b)+(c))", {"a"}},
  };
  APIAnalysis engine;
  for (const Row& row : rows) {
    Texts arguments;
    std::string name;
    const int count = engine.funcParameterParsing(row.text, "not among them", name) - 1;
    for (int i = 1; i <= count; ++i)
      arguments.push_back(engine.getParamterByPosition(row.text, i));
    EXPECT_EQ(arguments, row.arguments) << row.text;
    for (const int beyond : {-1, 0, count + 1})
      EXPECT_EQ(engine.getParamterByPosition(row.text, beyond), "") << row.text;
  }
}

TEST(CallParameters, ParenthesisAfterParenthesis) {
  APIAnalysis engine;
  EXPECT_EQ(engine.getParamterByPosition("f(g(x))", 1), "g(x");
  EXPECT_EQ(engine.getParamterByPosition("f(a, g(x))", 2), " g(x");
}

TEST(CallParameters, FindsThePositionOfASymbolWithoutQuotesAndBlanks) {
  struct Row {
    const char *text, *symbol;
    int position;
    const char* name;
  } rows[] = {
      {"init( 'tv' )", "tv", 1, "init"},  {"init(a,\"tv\")", "'tv'", 2, "init"}, {"init(a,b)", "tv", 3, "init"},
      {"init (\ntv)", "t v", 1, "init "}, {"init(tv2,tv)", "tv", 2, "init"},     {"none", "tv", 1, "unchanged"},
  };
  APIAnalysis engine;
  for (const Row& row : rows) {
    std::string name = "unchanged";
    EXPECT_EQ(engine.funcParameterParsing(row.text, row.symbol, name), row.position) << row.text;
    EXPECT_EQ(name, row.name);
  }
}

}  // namespace
