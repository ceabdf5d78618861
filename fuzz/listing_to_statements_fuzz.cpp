// Any text as a listing, line by line: replayed, twice by one machine, which must not remember the first time.

#include <algorithm>
#include <sstream>

#include "Support.h"
#include "platform/Limits.h"
#include "platform/TimeBudget.h"

using namespace FlashEngine_1_00;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::istringstream text(std::string(fuzz::viewOf(data, size)));
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);)
    lines.push_back(line);
  startTimeBudget();
  DeCompiler machine;
  std::vector<std::string> statements;
  std::vector<std::string> again;
  (void)machine.SWFDeCompilerMain(lines, statements);
  (void)machine.SWFDeCompilerMain(lines, again);
  if (timeBudgetSpent()) return 0;
  fuzz::require(statements == again, "a second replay is like the first");
  std::size_t bytes = 0;
  for (const std::string& statement : statements) {
    fuzz::require(std::count(statement.begin(), statement.end(), '(') > 0 && statement.back() == ')',
                  "each statement is a call");
    bytes += statement.size();
  }
  fuzz::require(bytes <= kMaxReplayBytes, "statements have a bounded length");
  return 0;
}
