#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "regex/Pattern.h"

// The functions that a source defines.

namespace FlashEngine_1_00::detail {

struct ScriptFunction {
  std::string_view header;  // "function init(a, b)" or "init : function (a)"
  std::string_view body;    // from the end of the header through the brace that closes the function
};

struct ScriptFunctions {
  std::vector<ScriptFunction> functions;
  std::vector<std::uint32_t> finds;  // positions in `functions`
};

// What headers look like. Compiling it costs more than searching a small source.
class FunctionHeaders {
 public:
  FunctionHeaders();

  const Pattern& pattern() const { return pattern_; }

 private:
  Pattern pattern_;
};

// The functions that `source` (zero-terminated, no zero byte inside) defines, as views into it. A function is found
// once for every block around a "function" keyword that it stands in, so that one inside another is found again in the
// outer one's block. Of more than kMaxEqualRecords finds of one function, the first ones and the last one stay: aliases
// depend on which function is found first, bindings on which is found last.
ScriptFunctions findFunctions(std::string_view source, const FunctionHeaders& headers = {});

}  // namespace FlashEngine_1_00::detail
