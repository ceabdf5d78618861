#include <gtest/gtest.h>

#include "APICheckEngine/search/Excerpts.h"
#include "APICheckEngine/search/ScriptFunctions.h"
#include "platform/Limits.h"

using namespace FlashEngine_1_00::detail;
using Texts = std::vector<std::string>;

namespace {

TEST(SourceScan, ExcerptsReachFromBlankToBlank) {
  struct Row {
    std::string source;
    Texts excerpts;
  };
  const std::string tail = "(\"tv\"); next;";
  const std::string x430(430, 'x');
  for (const Row& row : std::vector<Row>{
           {"document" + tail, {"document" + tail.substr(0, tail.size() - 1)}},  // the last byte is in no excerpt
           {"document", {}},                                                     // nothing follows
           {"ab DocUMENT" + tail, {" DocUMENT" + tail.substr(0, tail.size() - 1)}},
           {"a $('tv').b;", {" $('tv').b"}},
           {"a $ _b $x $ x;;;;;;;;", {" $ _b $x $ x;;;;;;;"}},
           {"1 $(" + x430 + " cut", {" $(" + x430}},  // 430 bytes from the first blank, then on to the next one
           {"1 $(" + x430.substr(6) + " a b", {" $(" + x430.substr(6) + " a"}},
       }) {
    Texts texts;
    for (const Excerpt& excerpt : findExcerpts(row.source))
      texts.emplace_back(excerpt.text);
    EXPECT_EQ(texts, row.excerpts) << row.source;
  }
}

TEST(SourceScan, ExcerptsKeepTheVariableThatIsAssigned) {
  struct Row {
    const char *before, *excerptStart;
  } rows[] = {
      {"var t = ", "t = "},
      {"var a.b.t =\n\t ", "a.b.t =\n\t "},
      {"t= ", "t= "},
      {"x == ", " "},
      {"x != ", " "},
      {"x += ", " "},
      {"= ", " "},
      {"x = = ", " "},
      {"return ", " "},
      {"a = b = ", "b = "},
      {"x=y ", " "},
      {"t[0] = ", " "},
      {"var tv =", "tv ="},
      {"var a=1,tv =", "tv ="},
      {"tv =\n\t", "tv =\n\t"},
      {"x tv \t=\n", "tv \t=\n"},
      {"x ==", " =="},
      {"x +=", " +="},
      {"x =>", " =>"},
      {"( =", " ="},
  };
  for (const Row& row : rows) {
    const std::string source = row.before + std::string("document.getElementById('tv'); ");
    const std::vector<Excerpt> excerpts = findExcerpts(source);
    ASSERT_EQ(excerpts.size(), 1U) << row.before;
    EXPECT_EQ(excerpts[0].text, row.excerptStart + std::string("document.getElementById('tv');")) << row.before;
  }
}

TEST(SourceScan, HitsInOneWordShareTheirExcerpt) {
  const std::vector<Excerpt> excerpts =
      findExcerpts("a $('a').$('b').document; b $('c');" + std::string(500, 'x') + " end");
  ASSERT_EQ(excerpts.size(), 2U);
  EXPECT_EQ(excerpts[0].hits, 3);
  EXPECT_EQ(excerpts[1].hits, 1);
}

Texts functionsIn(const std::string& source) {
  Texts found;
  const ScriptFunctions functions = findFunctions(source);
  for (const std::uint32_t find : functions.finds) {
    const ScriptFunction& f = functions.functions[find];
    found.push_back(std::string(f.header) + "~" + std::string(f.body));
  }
  return found;
}

TEST(SourceScan, FunctionsAreFoundOncePerBlockAroundThem) {
  const std::string far(101, ' ');
  struct Row {
    std::string source;
    Texts functions;
  };
  for (const Row& row : std::vector<Row>{
           {"function f(a, b) { x; }", {"function f(a, b)~ { x; }"}},
           {"init : function (a) {{}{}} }", {"init : function (a)~ {{}{}}"}},
           {"function f(a = 1) {}", {}},
           {"function f(a) {", {}},
           {"function f(a) }", {}},
           {"function f(a }{ ) {}", {}},  // its header is none; the block is there
           {"function f) ( {}", {}},
           {"f({function:1})", {}},
           {"function f() }{ x {}", {"function f()~ }{"}},  // counts agree where one brace of each has come
           {"function a(){}" + far + "function b(){}", {"function a()~{}", "function b()~{}"}},
           // The second keyword's block begins 100 bytes before it and so inside the first function, or before it.
           {"function a(){} function b(){}", {"function a()~{}", "function a()~{}", "function b()~{}"}},
           {"function a(){ function b(){} }",
            {"function a()~{ function b(){} }", "function b()~{}", "function b()~{}"}},
           // A block that begins inside a header finds what is left of it.
           {"name : function (a) {}" + std::string(81, ' ') + "function b(){}",
            {"name : function (a)~ {}", "e : function (a)~ {}", "function b()~{}"}},
       }) {
    EXPECT_EQ(functionsIn(row.source), row.functions) << row.source;
  }
}

TEST(SourceScan, DeepNestingKeepsABoundedNumberOfEqualRecords) {
  std::string source;
  for (int i = 0; i < 300; ++i)
    source += "function f(){" + std::string(101, ' ');
  source += std::string(300, '}');
  const ScriptFunctions functions = findFunctions(source);
  const auto innermost = std::count_if(functions.finds.begin(), functions.finds.end(), [&](std::uint32_t find) {
    return functions.functions[find].body.size() == 101 + 2;
  });
  EXPECT_EQ(innermost, FlashEngine_1_00::kMaxEqualRecords);
}

}  // namespace
