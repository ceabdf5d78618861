#include "swf/DeAssembler.h"

#include "platform/TimeBudget.h"

namespace FlashEngine_1_00 {

RunResult DeAssembler::SWFDeAssemblerMain(std::string /*path*/, std::vector<std::string>& /*lines*/) {
  return timeBudgetSpent() ? RUN_TIME_LIMIT : RUN_SUCCESS;
}

}  // namespace FlashEngine_1_00
