#include "decompiler/DeCompiler.h"

#include "tarvo/RunResult.h"

namespace FlashEngine_1_00 {

DeCompiler::DeCompiler() = default;
DeCompiler::~DeCompiler() = default;

unsigned DeCompiler::SWFDeCompilerMain(std::vector<std::string>& /*listing*/, std::vector<std::string>& statements) {
  statements.clear();
  return RUN_SUCCESS;
}

}  // namespace FlashEngine_1_00
