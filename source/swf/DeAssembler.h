#pragma once

#include <string>
#include <vector>

#include "tarvo/RunResult.h"

namespace FlashEngine_1_00 {

// Lists the script of one SWF file as text lines.
class DeAssembler {
 public:
  // Appends the listing of the file at `path` to `lines`. Flash script is not read yet: nothing is appended.
  RunResult SWFDeAssemblerMain(std::string path, std::vector<std::string>& lines);
};

}  // namespace FlashEngine_1_00
