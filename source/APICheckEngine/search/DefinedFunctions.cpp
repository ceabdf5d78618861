// Test: tests/APICheckEngine/ObjectDiscovery_test.cpp, Search_test.cpp.

#include "APICheckEngine/search/DefinedFunctions.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <string_view>
#include <unordered_set>

namespace FlashEngine_1_00::detail {
namespace {

// Sets `bare` to the header without blanks, then without the word "function", then without colons.
void strip(std::string_view header, std::string& bare) {
  constexpr std::string_view kWord = "function";
  bare.clear();
  std::remove_copy(header.begin(), header.end(), std::back_inserter(bare), ' ');
  for (std::size_t at = 0; (at = bare.find(kWord, at)) != std::string::npos;)
    bare.erase(at, kWord.size());
  bare.erase(std::remove(bare.begin(), bare.end(), ':'), bare.end());
}

std::string_view nameIn(std::string_view bare) {
  return bare.substr(0, bare.find('('));
}

}  // namespace

void DefinedFunctions::readNames() {
  std::string bare;
  const FlashFunctionInfo* before = nullptr;
  for (std::size_t i = 0; i < functions_.size(); ++i) {
    if (functions_[i] == before) continue;
    before = functions_[i];
    strip(before->header, bare);
    names_.emplace_back(std::hash<std::string_view>{}(nameIn(bare)), i);
  }
  std::sort(names_.begin(), names_.end());
  isRead_ = true;
}

const std::vector<std::string>& DefinedFunctions::headersOf(const std::string& name) {
  if (!isRead_) readNames();
  const auto [found, isNew] = byName_.try_emplace(name);
  std::vector<std::string>& headers = found->second;
  if (!isNew) return headers;
  const std::size_t hash = std::hash<std::string_view>{}(name);
  std::unordered_set<std::string> known;
  std::string bare;
  for (auto next = std::lower_bound(names_.begin(), names_.end(), std::pair(hash, std::size_t{0}));
       next != names_.end() && next->first == hash; ++next) {
    strip(functions_[next->second]->header, bare);
    if (nameIn(bare) == name && known.insert(bare).second) headers.push_back(bare);
  }
  return headers;
}

}  // namespace FlashEngine_1_00::detail
