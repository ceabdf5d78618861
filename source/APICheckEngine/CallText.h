#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>

// What script and Flash calls on an element look-up have in common (CallExtraction.cpp).

namespace FlashEngine_1_00 {
struct SWFStateMentInfo;
}

namespace FlashEngine_1_00::detail {

// Where in foundCallList the calls on a variable stand that were found in one text: from the first position up to the
// second.
struct FoundCalls {
  std::unordered_map<const SWFStateMentInfo*, std::pair<std::size_t, std::size_t>> positions;  // by binding
};

// The pattern of a look-up of `id` up to the dot behind it: `("tv").`.
std::string lookupOf(const std::string& id);

// Whether `callText` calls a built-in function: one of SystemFunctionPool stands before a "(".
bool holdsBuiltIn(const std::string& callText);

}  // namespace FlashEngine_1_00::detail
