// Any text as a listing, line by line: replayed.

#include <cstdint>
#include <sstream>

#include "decompiler/DeCompiler.h"
#include "platform/TimeBudget.h"

using namespace FlashEngine_1_00;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  startTimeBudget();
  std::istringstream text(std::string(reinterpret_cast<const char*>(data), size));
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);)
    lines.push_back(line);
  std::vector<std::string> statements;
  (void)DeCompiler().SWFDeCompilerMain(lines, statements);
  return 0;
}
