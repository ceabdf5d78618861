#pragma once

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "APICheckEngine/Records.h"

namespace FlashEngine_1_00::detail {

// Finds the functions of a name: their headers as "init(a,b)", each once, in the order of the list.
//
// The plain search reads every header of the list for every call. Here each is read once, when the first name is asked
// for, and only a hash of its name is kept: few names are asked for, and only their headers are read again. Equal
// headers have equal parameters, so that one of them is enough.
class DefinedFunctions {
 public:
  explicit DefinedFunctions(const std::vector<FlashFunctionInfo*>& functions) : functions_(functions) {}

  // Those with `name` before the parenthesis.
  const std::vector<std::string>& headersOf(const std::string& name);

 private:
  void readNames();

  const std::vector<FlashFunctionInfo*>& functions_;
  bool isRead_ = false;
  std::vector<std::pair<std::size_t, std::size_t>> names_;  // hash of a name and position of its function, sorted
  std::unordered_map<std::string, std::vector<std::string>> byName_;
};

}  // namespace FlashEngine_1_00::detail
