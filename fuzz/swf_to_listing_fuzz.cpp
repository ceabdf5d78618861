// Any bytes as a SWF file: read and listed, twice by one reader, which must not remember the first time. What is
// replayed while it is listed has the statements of the whole listing.

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
  DeCompiler machine;
  std::vector<std::string> statements;
  std::vector<std::string> ofListing;
  machine.beginReplay();
  (void)assembler.listFile(path, machine.lineTaker());
  machine.endReplay(statements);
  (void)machine.SWFDeCompilerMain(lines, ofListing);
  if (timeBudgetSpent()) return 0;
  fuzz::require(code == codeAgain && lines == again, "a second listing is like the first");
  fuzz::require(statements == ofListing, "a replay while the listing is made is that of the listing");
  for (const std::string& line : lines)
    fuzz::require(!line.empty() && line.size() <= kMaxFieldLine, "lines have a bounded length");
  return 0;
}
