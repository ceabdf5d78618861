// Plug-in calls in Flash content: the statements of one SWF file, searched like script.
//
// Reads objectVariableList; fills foundCallList through findAPIsFromPool. Test: tests/APICheckEngine/Driver_test.cpp.

#include "APICheckEngine/APIAnalysis.h"
#include "APICheckEngine/Keys.h"

namespace FlashEngine_1_00 {

RunResult APIAnalysis::FindAPIFunctionName4SWF(std::vector<std::string> statements, std::string fileName) {
  std::string joined;
  for (const std::string& statement : statements)
    joined += statement;
  for (const SWFStateMentInfo* binding : objectVariableList) {
    const detail::Key key = detail::splitKey(*binding->expression);
    (void)findAPIsFromPool(key.classId, key.symbol, &joined, fileName);
  }
  return RUN_SUCCESS;
}

}  // namespace FlashEngine_1_00
