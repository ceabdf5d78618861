// A page, a zero byte and a script (of another file): all web stages, from the selection of the sources to the
// verdicts.

#include "Support.h"

using namespace FlashEngine_1_00;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto [page, script] = fuzz::splitAt('\0', fuzz::viewOf(data, size));
  std::vector<std::string> files{fuzz::scratch() + "/index.html", fuzz::scratch() + "/main.js"};
  fuzz::writeFile(files[0], page);
  fuzz::writeFile(files[1], script);

  const fuzz::OpenFilesCheck openFiles;
  APIAnalysis engine;
  fuzz::loadDocumentedNames(engine);
  fuzz::require(engine.Prepare(&files) == RUN_SUCCESS, "sources are prepared");
  fuzz::require(engine.worthfulSourceList.size() == (page.empty() ? 0U : 1U) + (script.empty() ? 0U : 1U),
                "each source is selected");
  (void)engine.StartRun(&files);
  fuzz::finishAndCheckVerdicts(engine);
  return 0;
}
