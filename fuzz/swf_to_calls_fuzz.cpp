// Any bytes as the Flash movie of an application whose page binds a plug-in: its calls are found and judged.

#include "Support.h"

using namespace FlashEngine_1_00;

namespace {

constexpr const char* kPage =
    "<object id='tv' classid='clsid:MORVANE-NAVERTIX-TUNER'></object>\n"
    "<script>function init() { var box = document.getElementById('tv'); box.Play(1); }</script>\n";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string page = fuzz::scratch() + "/index.html";
  static const bool written = (fuzz::writeFile(page, kPage), true);
  std::vector<std::string> files{page, fuzz::scratch() + "/movie.swf"};
  fuzz::writeFile(files[1], fuzz::viewOf(data, size));

  const fuzz::OpenFilesCheck openFiles;
  APIAnalysis engine;
  fuzz::loadDocumentedNames(engine);
  fuzz::require(written && engine.Prepare(&files) == RUN_SUCCESS, "the page is prepared");
  const RunResult code = engine.StartRun(&files);
  fuzz::require(code == RUN_SUCCESS || code == RUN_UNDOCUMENTED_API, "no movie ends a run");
  fuzz::require(engine.objectVariableList.size() == 1, "the page binds its plug-in");
  fuzz::finishAndCheckVerdicts(engine);
  return 0;
}
