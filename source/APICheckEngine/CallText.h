#pragma once

#include <string>

// What script and Flash calls on an element look-up have in common (CallExtraction.cpp).

namespace FlashEngine_1_00::detail {

// The pattern of a look-up of `id` up to the dot behind it: `("tv").`.
std::string lookupOf(const std::string& id);

// Whether `callText` calls a built-in function: one of SystemFunctionPool stands before a "(".
bool holdsBuiltIn(const std::string& callText);

}  // namespace FlashEngine_1_00::detail
