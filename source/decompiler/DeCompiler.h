#pragma once

#include <string>
#include <vector>

namespace FlashEngine_1_00 {

// Replays a listing of DeAssembler and collects the call statements in it.
class DeCompiler {
 public:
  DeCompiler();
  virtual ~DeCompiler();

  // Sets `statements` to the call statements of `listing`. Always RUN_SUCCESS. Listings are empty as long as
  // DeAssembler reads no script, and so is the result.
  unsigned SWFDeCompilerMain(std::vector<std::string>& listing, std::vector<std::string>& statements);
};

}  // namespace FlashEngine_1_00
