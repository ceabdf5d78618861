// Scripts that somebody made to keep the engine busy: what comes after them is found all the same, and soon.

#include <chrono>

#include "support/EngineFixture.h"

namespace {

class HostileSources : public EngineTest {};

std::string repeated(const std::string& text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i)
    all += text;
  return all;
}

// The text with each of the numbers below `count` in the place of its "#".
std::string numbered(const std::string& text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i)
    all += std::string(text).replace(text.find('#'), 1, std::to_string(i));
  return all;
}

// Far above what any of them takes, far below what a quadratic search would.
#ifdef TARVO_EMULATED
constexpr std::chrono::seconds kAtMost{400};
#else
constexpr std::chrono::seconds kAtMost{60};
#endif

TEST_F(HostileSources, LongLinesAreReadToTheirEnd) {
  const struct {
    const char* what;
    std::string script;  // in a function, with the variable tv
  } rows[] = {
      {"a chain of 50,000 members", "tv" + repeated(".aa", 50'000) + "();"},
      {"a chain of 50,000 documented calls", "tv" + repeated(".Play()", 50'000) + ";"},
      {"a chain on a look-up", "document.getElementById('tv')" + repeated(".Play()", 50'000) + ";"},
      {"a string of 20 MB", "var s = '" + std::string(20'000'000, 'x') + "';"},
      {"statements of 20 MB", repeated("a=b+c;", 3'400'000)},
      {"calls of 20 MB", repeated("tv.Play(1);", 1'800'000)},
      {"opening parentheses", "tv.Play" + std::string(100'000, '(')},
      {"opening braces", std::string(100'000, '{') + std::string(100'000, '}')},
      {"calls of many functions of one name", repeated("f('tv');", 30'000) + numbered("function f(a#) {}", 20'000)},
      {"look-ups beside quoted parameters",
       "f('tv');" + numbered("function f('a#') {}", 40'000) + numbered("b = $('c#');", 40'000)},
      {"comments that do not end", repeated("/*", 100'000) + "*/"},
  };
  addHtml("<object id='tv' classid='MORVANE-NAVERTIX-TUNER'></object>");
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    addScript("function f() { var tv = document.getElementById('tv'); " + row.script + "\ntv.GetSerial(); }");
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(run(), RUN_UNDOCUMENTED_API);
    EXPECT_TRUE(std::chrono::steady_clock::now() - begin < kAtMost);
    expectFindings({"../main.js(2) : UndocumentedAPI 'GetSerial' used\n"});
  }
}

}  // namespace
