// Test: tests/APICheckEngine/ObjectDiscovery_test.cpp.

#include "APICheckEngine/search/DefinedFunctions.h"

#include <unordered_set>

#include "APICheckEngine/Keys.h"

namespace FlashEngine_1_00::detail {

const std::vector<std::string>& DefinedFunctions::headersOf(const std::string& name) {
  std::unordered_set<std::string> known;
  for (std::size_t i = isRead_ ? functions_.size() : 0; i < functions_.size(); ++i) {
    const std::string bare = withoutBlanks(std::string(functions_[i]->header));
    const std::string header = without(without(bare, "function"), ":");
    if (known.insert(header).second) byName_[header.substr(0, header.find('('))].push_back(header);
  }
  isRead_ = true;
  return byName_[name];
}

}  // namespace FlashEngine_1_00::detail
