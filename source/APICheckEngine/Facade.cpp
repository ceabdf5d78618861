// What programs around the engine ask it. Nothing here is part of a run. Tests: tests/checker/Checker_test.cpp,
// NotChecked_test.cpp, Flash_test.cpp.

#include "APICheckEngine/Facade.h"

#include "APICheckEngine/Verdicts.h"
#include "platform/TimeBudget.h"

namespace FlashEngine_1_00 {

std::string findingLine(const std::string& path, int line, const std::string& method) {
  return detail::findingLine(path, line, method);
}

bool isDatabaseTooDeep(const std::string& path) {
  const File file = openFile(path, "r");
  detail::DatabaseText text;
  return detail::readDatabase(file.get(), text) == RUN_DB_NO_ROOT && text.isTooDeep;
}

FlashLines listFlash(const std::string& path) {
  startTimeBudget();
  FlashLines listing{RUN_SUCCESS, {}, false, false};
  DeAssembler reader;
  listing.code = reader.SWFDeAssemblerMain(path, listing.lines);
  listing.isListingCut = reader.isCut() || timeBudgetSpent();
  return listing;
}

FlashLines decompileFlash(const std::string& path) {
  startTimeBudget();
  FlashLines statements{RUN_SUCCESS, {}, false, false};
  DeAssembler reader;
  DeCompiler replay;
  replay.beginReplay();
  statements.code = reader.listFile(path, replay.lineTaker());
  replay.endReplay(statements.lines);
  const bool isLate = timeBudgetSpent();
  statements.isListingCut = reader.isCut() || isLate;
  statements.isReplayCut = replay.isCut() || isLate;
  return statements;
}

}  // namespace FlashEngine_1_00
