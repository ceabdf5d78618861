// Any bytes as a SWF file: read and listed, twice by one reader, which must not remember the first time.

#include "Support.h"
#include "platform/Limits.h"
#include "platform/TimeBudget.h"

using namespace FlashEngine_1_00;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string path = fuzz::scratch() + "/movie.swf";
  fuzz::writeFile(path, fuzz::viewOf(data, size));
  startTimeBudget();
  const fuzz::OpenFilesCheck openFiles;
  DeAssembler assembler;
  std::vector<std::string> lines;
  std::vector<std::string> again;
  const RunResult code = assembler.SWFDeAssemblerMain(path, lines);
  const RunResult codeAgain = assembler.SWFDeAssemblerMain(path, again);
  if (timeBudgetSpent()) return 0;
  fuzz::require(code == codeAgain && lines == again, "a second listing is like the first");
  for (const std::string& line : lines)
    fuzz::require(!line.empty() && line.size() <= kMaxFieldLine, "lines have a bounded length");
  return 0;
}
