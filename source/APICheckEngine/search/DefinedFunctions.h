#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "APICheckEngine/Records.h"

namespace FlashEngine_1_00::detail {

// Finds the functions of a name: their headers as "init(a,b)", each once, in the order of the list.
//
// The plain search reads every header of the list for every call. Here each is read once, when the first name is asked
// for, which in most applications nobody does. Equal headers have equal parameters, so that one of them is enough.
class DefinedFunctions {
 public:
  explicit DefinedFunctions(const std::vector<FlashFunctionInfo*>& functions) : functions_(functions) {}

  // Those with `name` before the parenthesis.
  const std::vector<std::string>& headersOf(const std::string& name);

 private:
  const std::vector<FlashFunctionInfo*>& functions_;
  bool isRead_ = false;
  std::unordered_map<std::string, std::vector<std::string>> byName_;
};

}  // namespace FlashEngine_1_00::detail
