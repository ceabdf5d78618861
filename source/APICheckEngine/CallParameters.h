#pragma once

#include <string>

// The arguments of one call or function header, numbered from 1, without knowledge of string literals.

namespace FlashEngine_1_00::detail {

struct PassedArgument {
  std::string function;  // what stands before the first parenthesis; empty if there is none
  int position;          // of the argument; one more than there are arguments if it is not among them
};

// Where `symbol` is passed in `callText`. Blanks, line feeds and quotes around and inside both do not count.
PassedArgument passedArgument(const std::string& callText, const std::string& symbol);

// The argument at `position`, exactly as it stands; empty if there is none.
std::string argumentAt(const std::string& callText, int position);

}  // namespace FlashEngine_1_00::detail
